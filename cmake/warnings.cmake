# Warnings for our own code only; they are errors.
add_library(ptick_warnings INTERFACE)
target_compile_options(ptick_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Werror)

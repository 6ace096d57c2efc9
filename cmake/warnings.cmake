# Warnings for our own code only; they are errors.
add_library(ptick_warnings INTERFACE)
target_compile_options(ptick_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Werror)
# GCC 12 sees overlaps and overruns in the concatenation of strings where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(ptick_warnings INTERFACE -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# What release builds are hardened with: code and data at addresses drawn anew at each start, linker
# tables that are read-only before main, stacks that are watched, and calls of the C library that know
# how large their buffers are. What the library is built with, everything that links it is built with.
add_library(ptick_hardening INTERFACE)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_options(ptick_hardening INTERFACE
    -fPIE -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  target_link_options(ptick_hardening INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  # The same sources make the same bytes in whatever folder they are.
  target_compile_options(ptick_hardening INTERFACE -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
endif()

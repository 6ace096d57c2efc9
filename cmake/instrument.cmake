# Sanitizers and coverage: what the library is built with, everything that links it is built with.
add_library(ptick_instrument INTERFACE)
if(PTICK_SANITIZE)
  # The check of virtual calls needs a descriptor, and the tests take all descriptors away.
  target_compile_options(ptick_instrument INTERFACE
    -fsanitize=${PTICK_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ptick_instrument INTERFACE -fsanitize=${PTICK_SANITIZE})
endif()
if(PTICK_COVERAGE)
  target_compile_options(ptick_instrument INTERFACE --coverage -fno-inline)
  target_link_options(ptick_instrument INTERFACE --coverage)
endif()

# Programs for users. What this file knows of them, cmake/package.cmake installs and the tests look at.

# ptick_program(NAME SOURCE...): a program that is linked as all are. Its manual page is docs/NAME.1.in,
# its completions are completions/NAME.bash, _NAME and NAME.fish.
function(ptick_program name)
  add_executable(${name} ${ARGN})
  ptick_link_program(${name})
  set_property(GLOBAL APPEND PROPERTY ptick_programs ${name})
endfunction()

# Static programs run on every Linux of their kind of processor. For ptick_program() and for examples.
function(ptick_link_program name)
  target_link_libraries(${name} PRIVATE ptick_core ptick_warnings)
  if(PTICK_STATIC)
    target_link_options(${name} PRIVATE -static-pie)
  elseif(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_link_options(${name} PRIVATE -pie)
  endif()
  set_property(GLOBAL APPEND PROPERTY ptick_linked_programs ${name})
endfunction()

# The companions: programs beside ptick that use libraries, which ptick does not.

# ptick_companion_program(NAME FOLDER LIBRARY...): a companion. Its code is in src/FOLDER: main.cpp, and
# the rest as the library NAME-parts, which tests and fuzz targets link. The libraries are those that it
# needs beside what all companions share.
function(ptick_companion_program name folder)
  file(GLOB_RECURSE parts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
  list(FILTER parts EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name}-parts STATIC ${parts})
  target_link_libraries(${name}-parts PRIVATE ptick_warnings PUBLIC ptick_companion ${ARGN})
  ptick_program(${name} ${PROJECT_SOURCE_DIR}/src/${folder}/main.cpp)
  target_link_libraries(${name} PRIVATE ${name}-parts)
  set_property(GLOBAL APPEND PROPERTY ptick_companions ${name})
endfunction()

if(PTICK_COMPANIONS)
  add_subdirectory(src/companion)
  ptick_companion_program(ptick-merge ptick_merge)
  ptick_companion_program(ptick-annotate ptick_annotate)
  add_subdirectory(src/compare)
  ptick_companion_program(ptick-diff ptick_diff ptick_compare)
  include(cmake/ptick_export.cmake)
  include(cmake/ptick_view.cmake)
endif()

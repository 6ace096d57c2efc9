# Named targets: format, check-format, tidy.
file(GLOB_RECURSE ptick_own_code CONFIGURE_DEPENDS
  src/*.h src/*.cpp tests/*.h tests/*.cpp fuzz/*.h fuzz/*.cpp bench/*.h bench/*.cpp examples/*.cpp)

add_custom_target(format COMMAND clang-format -i ${ptick_own_code} VERBATIM)
add_custom_target(check-format COMMAND clang-format --dry-run --Werror ${ptick_own_code} VERBATIM)
add_custom_target(tidy
  COMMAND run-clang-tidy -quiet -p ${CMAKE_BINARY_DIR} -extra-arg=-Wno-unknown-warning-option
          "^${CMAKE_SOURCE_DIR}/(src|examples|tests|fuzz|bench)/"
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)

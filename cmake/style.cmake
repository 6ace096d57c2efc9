# Named targets: format, check-format. clang-tidy: tools/lint.
file(GLOB_RECURSE ptick_own_code CONFIGURE_DEPENDS
  src/*.h src/*.cpp tests/*.h tests/*.cpp fuzz/*.h fuzz/*.cpp bench/*.h bench/*.cpp examples/*.cpp)

add_custom_target(format COMMAND clang-format -i ${ptick_own_code} VERBATIM)
add_custom_target(check-format COMMAND clang-format --dry-run --Werror ${ptick_own_code} VERBATIM)

# ptick-view, and the page that it embeds: web/build makes it from web/ with npm, and installs what that
# needs.
file(GLOB_RECURSE ptick_page_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/web/src/*)
set(ptick_page ${PROJECT_SOURCE_DIR}/web/dist/ptick-view.html)
add_custom_command(OUTPUT ${ptick_page}
  COMMAND ${PROJECT_SOURCE_DIR}/web/build
  DEPENDS ${ptick_page_sources} ${PROJECT_SOURCE_DIR}/web/build
    ${PROJECT_SOURCE_DIR}/web/tools/build.mjs ${PROJECT_SOURCE_DIR}/web/package-lock.json
  COMMENT "Building the page of ptick-view" VERBATIM)
ptick_companion_program(ptick-view ptick_view ptick_compare ptick-export-parts)
set_source_files_properties(${PROJECT_SOURCE_DIR}/src/ptick_view/page.cpp PROPERTIES
  COMPILE_DEFINITIONS PTICK_VIEW_PAGE="${ptick_page}" OBJECT_DEPENDS ${ptick_page})
target_compile_definitions(ptick-view-parts PUBLIC PTICK_VERSION="${PROJECT_VERSION}")

# Installs a document of the repository. Lines between
#
#     <!-- in the repository -->
#     <!-- end -->
#
# are for readers of the repository only and are left out; lines between
#
#     <!-- where it is installed
#     -->
#
# are a remark in the repository, and are shown.
function(ptick_install_document file)
  set(installed ${PROJECT_BINARY_DIR}/documents/${file})
  get_filename_component(folder ${file} DIRECTORY)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/documents/${folder})
  execute_process(
    COMMAND sed -e "/^<!-- in the repository -->$/,/^<!-- end -->$/d"
                -e "/^<!-- where it is installed$/d" -e "/^-->$/d" ${PROJECT_SOURCE_DIR}/${file}
    OUTPUT_FILE ${installed} COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${file})
  install(FILES ${installed} DESTINATION ${CMAKE_INSTALL_DOCDIR}/${folder})
endfunction()

# Run by CPack to make the .tar.gz. What its own archives hold says who made them, and when.
set(name ${CPACK_PACKAGE_FILE_NAME})
execute_process(
  COMMAND tar --create --sort=name --owner=0 --group=0 --numeric-owner --format=gnu
          "--transform=s,^\\.,${name}," --directory ${CPACK_TEMPORARY_DIRECTORY} .
  COMMAND gzip -9n
  OUTPUT_FILE ${CPACK_PACKAGE_DIRECTORY}/${name}.tar.gz COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES ${CPACK_PACKAGE_DIRECTORY}/${name}.tar.gz)

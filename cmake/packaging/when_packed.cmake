# Run by CPack when a package is made. What CPack writes around the parts of a .deb shows the umask of
# whoever builds; what dpkg-deb writes does not.
if(CPACK_GENERATOR STREQUAL "DEB")
  foreach(deb IN LISTS CPACK_PACKAGE_FILES)
    set(parts ${CPACK_TOPLEVEL_DIRECTORY}/parts)
    file(REMOVE_RECURSE ${parts})
    execute_process(COMMAND dpkg-deb --raw-extract ${deb} ${parts} COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND chmod u=rwx,go=rx ${parts} ${parts}/DEBIAN COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND dpkg-deb --root-owner-group -Zgzip --build ${parts} ${deb}
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
endif()

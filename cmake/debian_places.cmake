# Run by CPack when the files of a package are in place: what a .deb has elsewhere, or otherwise, than
# an installation by hand.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)

file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
# Without a time stamp, so that the same files make the same package.
execute_process(COMMAND gzip -9n ${share}/man/man1/ptick.1 COMMAND_ERROR_IS_FATAL ANY)

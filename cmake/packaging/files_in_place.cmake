# Run by CPack when the files of a package are in place.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})

# What a .deb has elsewhere, or otherwise, than an installation by hand.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(share ${root}/usr/share)
  file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
  file(GLOB pages ${share}/man/man1/*.1)
  # Without a time stamp.
  execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
  include(${CMAKE_CURRENT_LIST_DIR}/debian_changelog.cmake)
  write_debian_changelog(${share}/doc/ptick/CHANGELOG.md ${share}/doc/ptick/changelog)
  file(MAKE_DIRECTORY ${share}/lintian/overrides)
  file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/lintian-overrides ${share}/lintian/overrides/ptick)
endif()

# Neither the umask of whoever builds nor the clock is seen in a package.
execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find ${root} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +
  COMMAND_ERROR_IS_FATAL ANY)

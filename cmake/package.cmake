# What is installed, and the two packages of it: a .deb and a .tar.gz. tools/package builds and tries
# them. The version is that of project(); nothing else says it.
include(GNUInstallDirs)

configure_file(docs/ptick.1.in ${PROJECT_BINARY_DIR}/ptick.1 @ONLY)

install(TARGETS ptick)
install(FILES ${PROJECT_BINARY_DIR}/ptick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES completions/ptick.bash RENAME ptick
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES completions/_ptick DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES completions/ptick.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
# Below docs/, where the README's links point.
install(FILES docs/record-format.md docs/port-protocol.md docs/scale.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)

set(PTICK_MAINTAINER "ptick maintainers <root@localhost>" CACHE STRING "Who makes the packages")

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${PTICK_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "report on profiles of Mavro applications")
set(CPACK_PACKAGE_FILE_NAME ptick-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Reads the profiles that Mavro applications write while they run, merges many\nof them, and prints one exact report: ticks by source line, subroutines,\nperformed programs, shared objects, or a keyboard replay script.")
# The command size, for -o -v.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS binutils)
if(NOT PTICK_STATIC)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_places.cmake)
include(CPack)

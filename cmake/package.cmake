# What is installed, and the two packages of it: a .deb and a .tar.gz. tools/package builds and tries
# them. The version is that of project(); nothing else says it.
include(GNUInstallDirs)
include(cmake/document.cmake)

# Of each program made with ptick_program().
get_property(ptick_programs GLOBAL PROPERTY ptick_programs)
foreach(program IN LISTS ptick_programs)
  configure_file(docs/${program}.1.in ${PROJECT_BINARY_DIR}/${program}.1 @ONLY)
  install(TARGETS ${program})
  install(FILES ${PROJECT_BINARY_DIR}/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES completions/${program}.bash RENAME ${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES completions/_${program} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES completions/${program}.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()

# The documents are in the same places as in the repository, so that their links hold.
ptick_install_document(README.md)
ptick_install_document(CHANGELOG.md)
foreach(document comparing glossary port-protocol record-format scale view viewers)
  ptick_install_document(docs/${document}.md)
endforeach()
install(DIRECTORY docs/view docs/viewers DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(FILES docs/ptick-profile.schema.json DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(FILES COPYRIGHT RENAME copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The examples that the README speaks of.
install(DIRECTORY examples/orders examples/library DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(FILES examples/port_listener.cpp DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(TARGETS port_listener DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/ptick)

# Nobody reads mail there: no address is known.
set(PTICK_PACKAGE_CONTACT "ptick maintainers <maintainers@ptick.invalid>" CACHE STRING
  "Who makes the packages")

set(CPACK_GENERATOR DEB External)
# One package of everything, the library with its headers included.
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/packaging/when_packing.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packaging/files_in_place.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packaging/when_packed.cmake)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/cmake/packaging/tarball.cmake)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${PTICK_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "report on profiles of Mavro applications")
set(CPACK_PACKAGE_FILE_NAME ptick-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Reads the profiles that Mavro applications write while they run, merges many\nof them, and prints one exact report: ticks by source line, subroutines,\nperformed programs, shared objects, or a keyboard replay script.")
# The command size, for -o -v.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS binutils)
if(NOT PTICK_STATIC)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
include(CPack)

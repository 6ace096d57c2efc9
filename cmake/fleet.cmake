# ptick-fleet: a program in Python beside ptick-merge, which it runs. What is in the build folder is all
# of it, so that it is found there as where it is installed: the program, and its modules in share/.
set(ptick_fleet_modules ${PROJECT_BINARY_DIR}/share/ptick-fleet/ptick_fleet)
file(GLOB ptick_fleet_sources CONFIGURE_DEPENDS fleet/ptick_fleet/*.py)
foreach(source IN LISTS ptick_fleet_sources)
  get_filename_component(name ${source} NAME)
  configure_file(${source} ${ptick_fleet_modules}/${name} COPYONLY)
endforeach()
configure_file(fleet/ptick_fleet/__init__.py.in ${ptick_fleet_modules}/__init__.py @ONLY)
configure_file(fleet/ptick-fleet ${PROJECT_BINARY_DIR}/ptick-fleet COPYONLY)
configure_file(docs/ptick-fleet.1.in ${PROJECT_BINARY_DIR}/ptick-fleet.1 @ONLY)

# It is a package of its own, for it needs Python and Dask, which ptick does not; so it is installed
# only when it is asked for: cmake --install DIR --component fleet.
include(GNUInstallDirs)
set(in_fleet COMPONENT fleet EXCLUDE_FROM_ALL)
install(PROGRAMS ${PROJECT_BINARY_DIR}/ptick-fleet DESTINATION ${CMAKE_INSTALL_BINDIR} ${in_fleet})
install(DIRECTORY ${ptick_fleet_modules} DESTINATION ${CMAKE_INSTALL_DATADIR}/ptick-fleet ${in_fleet}
  PATTERN "__pycache__" EXCLUDE)
install(FILES ${PROJECT_BINARY_DIR}/ptick-fleet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${in_fleet})
install(FILES completions/ptick-fleet.bash RENAME ptick-fleet
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${in_fleet})
install(FILES completions/_ptick-fleet
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions ${in_fleet})
install(FILES completions/ptick-fleet.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${in_fleet})
install(FILES COPYRIGHT RENAME copyright
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ptick-fleet ${in_fleet})

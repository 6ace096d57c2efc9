# Three libraries; main.cpp is nothing but the choice of a platform.
#
#   ptick_profile  values, records, reading and merging profiles, figures: standard C++ only
#   ptick_linux    the Linux platform: record files, processes, terminals, ports
#   ptick_text     what ptick prints: output, reports, control messages, the program
#
# ptick_core is all of them, for tests, benchmarks and fuzz targets.
function(ptick_library name)
  cmake_parse_arguments(PARSE_ARGV 1 library "" "" "FOLDERS;LINK")
  set(sources)
  foreach(folder IN LISTS library_FOLDERS)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    list(FILTER found EXCLUDE REGEX "/main\\.cpp$")
    list(APPEND sources ${found})
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ptick>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(${name} PUBLIC ${library_LINK}
    PRIVATE $<BUILD_INTERFACE:ptick_warnings>
    PUBLIC $<BUILD_INTERFACE:ptick_instrument> $<BUILD_INTERFACE:ptick_hardening>)
endfunction()

include(GNUInstallDirs)
find_package(Threads REQUIRED)
ptick_library(ptick_profile FOLDERS parallel value records profile figures LINK Threads::Threads)
ptick_library(ptick_linux FOLDERS platform/linux)
ptick_library(ptick_text FOLDERS output reports portctl ptick LINK ptick_profile)
add_library(ptick_core INTERFACE)
target_link_libraries(ptick_core INTERFACE ptick_text ptick_profile ptick_linux)

# What others may link: find_package(ptick) gives ptick::profile (reading and merging profiles) and
# ptick::linux (record files, PortEndpoint). The headers are those that their public headers include.
include(CMakePackageConfigHelpers)
set(PTICK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ptick)
set_target_properties(ptick_profile PROPERTIES EXPORT_NAME profile)
set_target_properties(ptick_linux PROPERTIES EXPORT_NAME linux)
install(TARGETS ptick_profile ptick_linux EXPORT ptick COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT ptick FILE ptick-targets.cmake NAMESPACE ptick:: COMPONENT development
  DESTINATION ${PTICK_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ptick-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES cmake/ptick-config.cmake ${PROJECT_BINARY_DIR}/ptick-config-version.cmake
  DESTINATION ${PTICK_CMAKE_DIR} COMPONENT development)
foreach(folder platform parallel value records profile figures)
  install(DIRECTORY src/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ptick COMPONENT development
    FILES_MATCHING PATTERN "*.h"
    PATTERN "linux" EXCLUDE)
endforeach()
install(FILES src/platform/linux/record_files.h src/platform/linux/unique_fd.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ptick/platform/linux COMPONENT development)
install(FILES src/platform/linux/ports/port_endpoint.h src/platform/linux/ports/claimed_port.h
  src/platform/linux/ports/port_wire.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ptick/platform/linux/ports COMPONENT development)

# find_package(ptick): reading and merging profiles (ptick::profile), record files of the system and
# listening on a port (ptick::linux).
include(CMakeFindDependencyMacro)
find_dependency(Threads)
include("${CMAKE_CURRENT_LIST_DIR}/ptick-targets.cmake")

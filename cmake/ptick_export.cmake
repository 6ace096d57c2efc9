# ptick-export, which compresses with zlib and writes protocol buffers.
find_path(PTICK_PROTOZERO_DIR protozero/pbf_writer.hpp REQUIRED)
find_package(ZLIB REQUIRED)
# The static library where programs are static.
if(PTICK_STATIC)
  find_library(PTICK_ZLIB libz.a REQUIRED)
else()
  set(PTICK_ZLIB ZLIB::ZLIB)
endif()

ptick_companion_program(ptick-export ptick_export ${PTICK_ZLIB})
target_compile_definitions(ptick-export-parts PRIVATE PTICK_VERSION="${PROJECT_VERSION}")
target_include_directories(ptick-export-parts SYSTEM PRIVATE ${PTICK_PROTOZERO_DIR})

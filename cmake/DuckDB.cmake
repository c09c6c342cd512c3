# DuckDB 1.4: an installed one if CMake finds it, else the one that scripts/bootstrap has unpacked.

set(HVINTEG_DEPS_DIR ${PROJECT_SOURCE_DIR}/build/deps CACHE PATH "Where scripts/bootstrap unpacked")
find_path(DUCKDB_INCLUDE_DIR duckdb.h HINTS ${HVINTEG_DEPS_DIR}/duckdb)
find_library(DUCKDB_LIBRARY duckdb HINTS ${HVINTEG_DEPS_DIR}/duckdb)
if(NOT DUCKDB_INCLUDE_DIR OR NOT DUCKDB_LIBRARY)
  message(FATAL_ERROR "DuckDB is missing: run scripts/bootstrap")
endif()

# Other versions may have another C interface or read files differently.
if(NOT DUCKDB_VERSION_FOUND AND NOT CMAKE_CROSSCOMPILING)
  set(probe ${PROJECT_BINARY_DIR}/duckdb_version.cpp)
  file(WRITE ${probe} "#include <cstdio>\n#include <duckdb.h>\n"
    "int main() { std::fputs(duckdb_library_version(), stdout); }\n")
  try_run(DUCKDB_PROBE_STATUS DUCKDB_PROBE_COMPILED ${PROJECT_BINARY_DIR}/duckdb_version ${probe}
    CMAKE_FLAGS -DINCLUDE_DIRECTORIES=${DUCKDB_INCLUDE_DIR} -DCMAKE_BUILD_RPATH=${DUCKDB_LIBRARY}
    LINK_LIBRARIES ${DUCKDB_LIBRARY}
    COMPILE_OUTPUT_VARIABLE probe_log RUN_OUTPUT_VARIABLE duckdb_version)
  if(NOT DUCKDB_PROBE_COMPILED)
    message(FATAL_ERROR "${DUCKDB_LIBRARY} cannot be linked:\n${probe_log}")
  endif()
  if(NOT duckdb_version MATCHES "^v1\\.4\\.")
    message(FATAL_ERROR "${DUCKDB_LIBRARY} is DuckDB ${duckdb_version}; hvinteg needs 1.4")
  endif()
  set(DUCKDB_VERSION_FOUND ${duckdb_version} CACHE INTERNAL "The version of DUCKDB_LIBRARY")
endif()

add_library(duckdb::duckdb SHARED IMPORTED)
set_target_properties(duckdb::duckdb PROPERTIES
  IMPORTED_LOCATION ${DUCKDB_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${DUCKDB_INCLUDE_DIR})
install(FILES ${DUCKDB_LIBRARY} DESTINATION ${HVINTEG_HOME_SUBDIR})

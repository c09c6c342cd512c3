# DuckDB 1.4: an installed one if CMake finds it, else what scripts/bootstrap unpacked.

set(HVINTEG_DEPS_DIR ${PROJECT_SOURCE_DIR}/build/deps CACHE PATH "Where scripts/bootstrap unpacked")
find_path(DUCKDB_INCLUDE_DIR duckdb.h HINTS ${HVINTEG_DEPS_DIR}/duckdb)
find_library(DUCKDB_LIBRARY duckdb HINTS ${HVINTEG_DEPS_DIR}/duckdb)
if(NOT DUCKDB_INCLUDE_DIR OR NOT DUCKDB_LIBRARY)
  message(FATAL_ERROR "DuckDB is missing: run scripts/bootstrap")
endif()
add_library(duckdb::duckdb SHARED IMPORTED)
set_target_properties(duckdb::duckdb PROPERTIES
  IMPORTED_LOCATION ${DUCKDB_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${DUCKDB_INCLUDE_DIR})
install(FILES ${DUCKDB_LIBRARY} DESTINATION ${CMAKE_INSTALL_LIBDIR})

# cpack -G DEB makes three packages: hvinteg (the libraries and what they load), libhvinteg-dev and
# hvhost. For a package that follows Debian's folders, configure with -DCMAKE_INSTALL_PREFIX=/usr.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hvinteg)
set(CPACK_PACKAGE_VENDOR "The authors of hvinteg")
set(CPACK_PACKAGE_CONTACT "The authors of hvinteg <hvinteg@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL hvinteg libhvinteg-dev hvhost)
if(HVINTEG_CLUSTER_CLIENT)
  list(APPEND CPACK_COMPONENTS_ALL hvinteg-cluster)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
get_filename_component(duckdb_folder ${DUCKDB_LIBRARY} DIRECTORY)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY};${duckdb_folder}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# debian_package(component section [DEPENDS text] SUMMARY text DETAILS text). The libraries that a program
# loads become dependencies by themselves.
macro(debian_package component section)
  cmake_parse_arguments(deb "" "DEPENDS;SUMMARY;DETAILS" "" ${ARGN})
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${component})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS ${deb_DEPENDS})
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${deb_SUMMARY}\n${deb_DETAILS}")
  # Debian wants the license of each package in a file of this name. A normal installation has it once.
  install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()
debian_package(hvinteg libs DEPENDS "default-jre-headless (>= 2:1.17) | java17-runtime-headless"
  SUMMARY "analytic jobs in the process of a desktop statistics application"
  DETAILS "The libraries hvinteg, its host, its engine and its scoring library, with the engine's components.")
set(CPACK_DEBIAN_HVINTEG_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HVINTEG_PACKAGE_GENERATE_SHLIBS ON)
# The scripts of the package make and remove the archive of Java classes.
set(components_folder ${CPACK_PACKAGING_INSTALL_PREFIX}/${HVINTEG_HOME_SUBDIR}/hv/af/components)
if(IS_ABSOLUTE "${HVINTEG_HOME_SUBDIR}")
  set(components_folder ${HVINTEG_HOME_SUBDIR}/hv/af/components)
endif()
foreach(script postinst prerm)
  configure_file(packaging/debian/${script}.in ${PROJECT_BINARY_DIR}/debian/${script} @ONLY)
endforeach()
set(CPACK_DEBIAN_HVINTEG_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/postinst
  ${PROJECT_BINARY_DIR}/debian/prerm ${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/triggers)
debian_package(libhvinteg-dev libdevel DEPENDS "hvinteg ${same_version}, default-jdk-headless"
  SUMMARY "headers to build a program against hvinteg"
  DETAILS "With find_package(hvinteg) and pkg-config.")
debian_package(hvhost math DEPENDS "hvinteg ${same_version}"
  SUMMARY "aggregates, converts, describes, scores and maps datasets"
  DETAILS "A headless host: it runs the procedures of hvinteg on files, without windows.")
set(CPACK_DEBIAN_HVHOST_PACKAGE_SHLIBDEPS ON)
if(HVINTEG_CLUSTER_CLIENT)
  debian_package(hvinteg-cluster libs DEPENDS "hvinteg ${same_version}"
    SUMMARY "jobs of hvinteg on a Spark cluster"
    DETAILS "The client with which the engine runs a job on a cluster instead of in its own process.")
endif()
include(CPack)

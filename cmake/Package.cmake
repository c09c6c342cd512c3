# Installs what another project needs to build against hvinteg: headers, find_package(hvinteg) and
# pkg-config.
include(CMakePackageConfigHelpers)

set(package_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/hvinteg)
set(package_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/hvinteg)

# The contracts, and what the working host and engine have beyond them for host programs.
foreach(folder contracts/metadata contracts/host contracts/engine contracts/scoring
    platform/host/public platform/engine/public)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/
    DESTINATION ${package_include_dir} COMPONENT libhvinteg-dev FILES_MATCHING PATTERN "*.h")
  file(GLOB_RECURSE folder_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  set_property(GLOBAL APPEND PROPERTY HVINTEG_INSTALLED_HEADERS ${folder_headers})
  string(APPEND doxygen_folders " \\\n  \"${PROJECT_SOURCE_DIR}/${folder}\"")
endforeach()
# ErrorIds.h of the engine includes it.
install(FILES ${PROJECT_SOURCE_DIR}/platform/datafile/FaultIds.h
  DESTINATION ${package_include_dir}/datafile COMPONENT libhvinteg-dev)
set_property(GLOBAL APPEND PROPERTY HVINTEG_INSTALLED_HEADERS ${PROJECT_SOURCE_DIR}/platform/datafile/FaultIds.h)
set(report_headers ReportExport.h page/OutputPage.h
  text/OutputText.h text/TerminalText.h text/TextGrid.h)
foreach(header ${report_headers})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/report/${header}
    DESTINATION ${package_include_dir}/report/${folder} COMPONENT libhvinteg-dev)
  set_property(GLOBAL APPEND PROPERTY HVINTEG_INSTALLED_HEADERS ${PROJECT_SOURCE_DIR}/report/${header})
endforeach()

# Installs only the headers of the library that declare something exported, and headers that these
# include.
set(headers_without_export data/WeightAdjust.h support/HvintegExport.h hvl/HVFunction.h tcm/HVForecast.h)
file(GLOB library_headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/hvinteg
  ${PROJECT_SOURCE_DIR}/hvinteg/*/*.h)
foreach(header ${library_headers})
  file(STRINGS ${PROJECT_SOURCE_DIR}/hvinteg/${header} exports REGEX "HVINTEG_EXPORT" LIMIT_COUNT 1)
  if(exports OR header IN_LIST headers_without_export)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/hvinteg/${header}
      DESTINATION ${package_include_dir}/${folder} COMPONENT libhvinteg-dev)
    set_property(GLOBAL APPEND PROPERTY HVINTEG_INSTALLED_HEADERS ${PROJECT_SOURCE_DIR}/hvinteg/${header})
  endif()
endforeach()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/data/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/hvinteg/examples COMPONENT hvhost)

install(EXPORT hvintegTargets NAMESPACE hvinteg:: DESTINATION ${package_config_dir}
  COMPONENT libhvinteg-dev)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/hvintegConfig.cmake.in
  ${PROJECT_BINARY_DIR}/hvintegConfig.cmake INSTALL_DESTINATION ${package_config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/hvintegConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/hvintegConfig.cmake ${PROJECT_BINARY_DIR}/hvintegConfigVersion.cmake
  DESTINATION ${package_config_dir} COMPONENT libhvinteg-dev)

# pkg-config cannot search for the Java headers, so it gets the path on this machine.
list(TRANSFORM JNI_INCLUDE_DIRS PREPEND "-I" OUTPUT_VARIABLE package_jni_flags)
list(REMOVE_DUPLICATES package_jni_flags)
list(JOIN package_jni_flags " " package_jni_flags)
file(RELATIVE_PATH package_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(package_prefix "\${pcfiledir}/${package_prefix}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/hvinteg.pc.in ${PROJECT_BINARY_DIR}/hvinteg.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/hvinteg.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT libhvinteg-dev)

# Licenses, man pages and shell completions of hvhost, and the API reference.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(notices ${PROJECT_BINARY_DIR}/THIRD-PARTY-LICENSES.txt)
set(chart_licenses ${HVINTEG_DEPS_DIR}/charts/chart-library.licenses.txt)
file(GLOB license_texts CONFIGURE_DEPENDS packaging/licenses/*.txt)
set(notice_sources packaging/third-party-licenses packaging/third-party.txt LICENSE ${license_texts})
if(EXISTS ${chart_licenses})
  list(APPEND notice_sources ${chart_licenses})
endif()
add_custom_command(OUTPUT ${notices}
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/packaging/third-party-licenses ${chart_licenses} ${notices}
  DEPENDS ${notice_sources} COMMENT "Collecting the licenses of the libraries used" VERBATIM)
add_custom_target(third_party_licenses ALL DEPENDS ${notices})
install(FILES LICENSE ${notices} DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Made from the help texts, so that they cannot differ. hvhost with a sanitizer is not for installation.
if(HVINTEG_SANITIZER STREQUAL "" AND NOT CMAKE_CROSSCOMPILING)
  set(manual ${PROJECT_BINARY_DIR}/manual)
  add_custom_command(OUTPUT ${manual}/stamp
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/packaging/man-pages $<TARGET_FILE:hvhost> ${manual}/man1
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/completions $<TARGET_FILE:hvhost> ${manual}
    COMMAND ${CMAKE_COMMAND} -E touch ${manual}/stamp
    DEPENDS hvhost packaging/man-pages packaging/completions
    COMMENT "Writing the man pages and completions of hvhost" VERBATIM)
  add_custom_target(hvhost_manual ALL DEPENDS ${manual}/stamp)
  install(DIRECTORY ${manual}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT hvhost)
  install(FILES ${manual}/hvhost.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    RENAME hvhost COMPONENT hvhost)
  install(FILES ${manual}/hvhost.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    COMPONENT hvhost)
  # Debian's zsh searches another folder than its authors recommend. The component local is in no package.
  install(FILES ${manual}/_hvhost DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT local)
  install(FILES ${manual}/_hvhost DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
    COMPONENT hvhost EXCLUDE_FROM_ALL)
endif()

# The reference is made of the installed headers.
find_program(DOXYGEN doxygen DOC "Makes the API reference")
if(DOXYGEN)
  set(reference ${PROJECT_BINARY_DIR}/docs)
  get_property(reference_headers GLOBAL PROPERTY HVINTEG_INSTALLED_HEADERS)
  list(JOIN reference_headers "\" \\\n  \"" reference_input)
  configure_file(cmake/Doxyfile.in ${reference}/Doxyfile @ONLY)
  add_custom_command(OUTPUT ${reference}/stamp
    COMMAND ${DOXYGEN} ${reference}/Doxyfile
    COMMAND ${CMAKE_COMMAND} -E touch ${reference}/stamp
    DEPENDS ${reference_headers} ${reference}/Doxyfile docs/reference.md
    COMMENT "Writing the API reference to ${reference}/html" VERBATIM)
  add_custom_target(docs DEPENDS ${reference}/stamp)
endif()

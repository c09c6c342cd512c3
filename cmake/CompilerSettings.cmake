# Use a compiler cache if it is installed.
find_program(HVINTEG_CCACHE ccache DOC "Keeps compiled objects from one build to the next")
if(HVINTEG_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${HVINTEG_CCACHE})
endif()

# Link with lld if it is installed: it takes a fifth of the time. A release uses the system's linker.
find_program(HVINTEG_LLD ld.lld DOC "A fast linker for builds without optimization")
if(HVINTEG_LLD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_link_options(-fuse-ld=lld)
endif()

# Warnings apply only to our own code. Sanitizers apply to everything that is built.

option(HVINTEG_WARNINGS_AS_ERRORS "Warnings of the compiler are errors" ON)
add_library(hv_compiler_settings INTERFACE)
target_compile_options(hv_compiler_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${HVINTEG_WARNINGS_AS_ERRORS}>:-Werror>)
# At -O3, g++ 12 wrongly reports overlapping copies and dangling pointers in its own std::string.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(hv_compiler_settings INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo>:-Wno-restrict;-Wno-dangling-pointer>)
endif()

# g++ 12 wrongly reports the instrumented standard library as uninitialized.
if(NOT HVINTEG_SANITIZER STREQUAL "" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(hv_compiler_settings INTERFACE -Wno-maybe-uninitialized)
endif()

if(HVINTEG_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined,float-cast-overflow,float-divide-by-zero
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # What fuzz targets link is compiled with these as well, so that the fuzzer sees each branch of it. A
  # table of its addresses would have three million relocations, which each start of a program resolves.
  if(HVINTEG_FUZZ)
    set(HVINTEG_FUZZ_OPTIONS -fsanitize=fuzzer-no-link -fno-sanitize-coverage=pc-table)
  endif()
elseif(HVINTEG_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(NOT HVINTEG_SANITIZER STREQUAL "")
  message(FATAL_ERROR "HVINTEG_SANITIZER is \"${HVINTEG_SANITIZER}\": address, thread or empty")
endif()

# hv_unity(target headers...): compiles the sources of a folder together, so that common headers are parsed
# once. That takes a third of the time. These headers are parsed once for the whole target. All presets do
# so; without, each source is compiled alone, which detects missing includes. Names in unnamed namespaces
# must be unique within a folder.
option(HVINTEG_UNITY "Compile the sources of a folder together" OFF)
set(HVINTEG_UNITY_SOURCES 12 CACHE STRING "The most sources in one unit")
function(hv_unity target)
  if(NOT HVINTEG_UNITY)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # With precompiled headers and -O3, g++ 12 wrongly reports copies of absurd lengths in std::string.
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
  # g++ treats the included sources as headers, in which members of unnamed types would be an error.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  get_target_property(sources ${target} SOURCES)
  set(count 0)
  set(last_folder "")
  list(FILTER sources EXCLUDE REGEX "^\\$<") # objects of another target
  foreach(source ${sources})
    get_filename_component(path ${source} ABSOLUTE)
    file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${path})
    get_filename_component(folder ${path} DIRECTORY)
    if(NOT folder STREQUAL last_folder)
      set(count 0)
      set(last_folder ${folder})
    endif()
    math(EXPR unit "${count} / ${HVINTEG_UNITY_SOURCES}")
    math(EXPR count "${count} + 1")
    string(MAKE_C_IDENTIFIER "${folder}_${unit}" group)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
endfunction()

# The ABI may change with each minor version (0.x), as find_package assumes (SameMinorVersion). So the
# SONAME and the version of the symbols contain both numbers.
set(HVINTEG_ABI ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(HVINTEG_VERSION_SCRIPTS ${CMAKE_CURRENT_LIST_DIR})

# A shared library of this project: warnings, no undefined symbols, SONAME, versioned symbols. VERSION_SCRIPT
# is a template that selects the exported symbols; by default the library exports what its sources mark.
# NO_EXPORT: the library is loaded by name, and other projects do not link it.
function(hv_shared_library target)
  cmake_parse_arguments(arg "NO_EXPORT" "VERSION_SCRIPT" "" ${ARGN})
  if(NOT arg_VERSION_SCRIPT)
    set(arg_VERSION_SCRIPT ${HVINTEG_VERSION_SCRIPTS}/symbols.map.in)
  endif()
  hv_unity(${target})
  target_link_libraries(${target} PRIVATE hv_compiler_settings)
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${HVINTEG_ABI})
  set(symbol_version ${target}_${HVINTEG_ABI})
  set(map ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  configure_file(${arg_VERSION_SCRIPT} ${map} @ONLY)
  target_link_options(${target} PRIVATE -Wl,--version-script=${map})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
  if(HVINTEG_SANITIZER STREQUAL "")
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
  if(arg_NO_EXPORT)
    install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT hvinteg NAMELINK_SKIP)
  else()
    install(TARGETS ${target} EXPORT hvintegTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      COMPONENT hvinteg NAMELINK_COMPONENT libhvinteg-dev)
  endif()
endfunction()

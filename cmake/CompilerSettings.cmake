# Warnings are errors on our own code; sanitizers go to everything that is built.

add_library(hv_compiler_settings INTERFACE)
target_compile_options(hv_compiler_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# g++ 12 sees overlapping copies in its own std::string at -O3, where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(hv_compiler_settings INTERFACE $<$<CONFIG:Release,RelWithDebInfo>:-Wno-restrict>)
endif()

# The instrumented standard library looks uninitialized to g++ 12.
if(NOT HVINTEG_SANITIZER STREQUAL "" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(hv_compiler_settings INTERFACE -Wno-maybe-uninitialized)
endif()

if(HVINTEG_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined,float-cast-overflow,float-divide-by-zero
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
elseif(HVINTEG_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(NOT HVINTEG_SANITIZER STREQUAL "")
  message(FATAL_ERROR "HVINTEG_SANITIZER is \"${HVINTEG_SANITIZER}\": address, thread or empty")
endif()

# Headers that most sources of a target include are parsed once in instrumented builds, which take
# long. The other builds parse them anew, and so notice a source that lacks an include.
function(hv_precompile target)
  if(NOT HVINTEG_SANITIZER STREQUAL "")
    target_precompile_headers(${target} PRIVATE
      <algorithm> <filesystem> <functional> <map> <memory> <optional> <string> <vector> ${ARGN})
  endif()
endfunction()

# A shared library of ours: warnings, no undefined symbols, SONAME.
function(hv_shared_library target)
  target_link_libraries(${target} PRIVATE hv_compiler_settings)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(HVINTEG_SANITIZER STREQUAL "")
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
  install(TARGETS ${target} EXPORT hvintegTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

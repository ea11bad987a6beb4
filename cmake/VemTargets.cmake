# Options that every target of the project is compiled with.
#
# Contraction stays off, so that each floating-point step rounds once on every machine.
function(vem_compile_options target)
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(VEM_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(VEM_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${VEM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
    target_link_options(${target} PRIVATE -fsanitize=${VEM_SANITIZE})
  endif()
  # These two have a heap of their own, and turn signals into words.
  if(VEM_SANITIZE MATCHES "address|thread")
    target_compile_definitions(${target} PRIVATE VEM_SANITIZED)
  endif()
  if(VEM_BUILD_FUZZ)
    target_compile_options(${target} PRIVATE
      -fsanitize=fuzzer-no-link,address -fno-omit-frame-pointer -g1)
    target_link_options(${target} PRIVATE -fsanitize=address)
  endif()
endfunction()

# A shared library of the project: soname from the major version, and only the symbols that its
# version script names. Installed, it finds OpenCV where it was linked to it.
function(vem_add_library target)
  cmake_parse_arguments(ARG "" "VERSION" "SOURCES" ${ARGN})
  string(REGEX MATCH "^[0-9]+" major ${ARG_VERSION})
  set(script ${PROJECT_SOURCE_DIR}/cmake/${target}.map)

  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(VemData::${target} ALIAS ${target})
  vem_compile_options(${target})
  if(VEM_PRECOMPILE_LIBRARIES)
    target_precompile_headers(${target} PRIVATE
      <opencv2/core.hpp> <algorithm> <cmath> <string> <vector>)
  endif()
  set_target_properties(${target} PROPERTIES
    VERSION ${ARG_VERSION}
    SOVERSION ${major}
    INSTALL_RPATH "$ORIGIN"
    INSTALL_RPATH_USE_LINK_PATH ON
    LINK_DEPENDS ${script})
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE
    LINKER:--version-script=${script} LINKER:-Bsymbolic-functions LINKER:--as-needed)
  target_include_directories(${target}
    PUBLIC
      $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
      $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/VemData>
    PRIVATE
      ${PROJECT_SOURCE_DIR})
endfunction()

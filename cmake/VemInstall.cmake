include(CMakePackageConfigHelpers)

set(VEM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VemData)

install(TARGETS VemData VemRLC EXPORT VemDataTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
file(GLOB VEM_PUBLIC_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h)
install(FILES ${VEM_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VemData)
file(GLOB VEM_COMPANION_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/vem/*.h)
install(FILES ${VEM_COMPANION_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VemData/vem)
install(EXPORT VemDataTargets NAMESPACE VemData:: DESTINATION ${VEM_CMAKE_DIR})

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/VemDataConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VemDataConfig.cmake
  INSTALL_DESTINATION ${VEM_CMAKE_DIR})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/VemDataConfigVersion.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/VemDataConfig.cmake
  ${PROJECT_BINARY_DIR}/VemDataConfigVersion.cmake
  DESTINATION ${VEM_CMAKE_DIR})

# The pkg-config file tells its places from its own, so that the installed tree may be moved; places
# that were given as absolute stay so.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(VEM_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH VEM_PC_UP "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  set(VEM_PC_PREFIX "\${pcfiledir}/${VEM_PC_UP}")
endif()
foreach(kind INCLUDEDIR LIBDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${kind}}")
    set(VEM_PC_${kind} "${CMAKE_INSTALL_${kind}}")
  else()
    set(VEM_PC_${kind} "\${prefix}/${CMAKE_INSTALL_${kind}}")
  endif()
endforeach()
if(OpenCV_VERSION_MAJOR LESS 4)
  set(VEM_PC_OPENCV opencv)
else()
  set(VEM_PC_OPENCV opencv${OpenCV_VERSION_MAJOR})
endif()

# OpenCV's headers are found by its own pkg-config file. Where it has none, they are named.
set(VEM_PC_REQUIRES "Requires.private: ${VEM_PC_OPENCV}")
set(VEM_PC_OPENCV_CFLAGS)
get_target_property(imported opencv_core IMPORTED)
if(imported)
  get_target_property(library opencv_core LOCATION)
  get_filename_component(folder "${library}" DIRECTORY)
  if(NOT EXISTS "${folder}/pkgconfig/${VEM_PC_OPENCV}.pc")
    set(VEM_PC_REQUIRES)
    foreach(folder ${OpenCV_INCLUDE_DIRS})
      string(APPEND VEM_PC_OPENCV_CFLAGS " -I\"${folder}\"")
    endforeach()
  endif()
endif()
configure_file(
  ${PROJECT_SOURCE_DIR}/cmake/VemData.pc.in ${PROJECT_BINARY_DIR}/VemData.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VemData.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# What `cmake --install` puts where: libraries with their public headers, the CMake package, the pkg-config file of the
# module, the program and its manual page.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/VantixInAppMessage")
get_property(components GLOBAL PROPERTY VANTIX_COMPONENTS)

foreach(component IN LISTS components)
  install(TARGETS VantixComponent${component} EXPORT VantixInAppMessage${component}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  install(EXPORT VantixInAppMessage${component}
    NAMESPACE VantixInAppMessage:: DESTINATION "${package_folder}" FILE VantixInAppMessage${component}Targets.cmake)
  install(FILES "${PROJECT_SOURCE_DIR}/cmake/package/NeededBy${component}.cmake" DESTINATION "${package_folder}")
endforeach()

if(BUILD_SHARED_LIBS)
  set(VANTIX_LIBRARIES_ARE_SHARED ON)
  set(pkg_config_requires "")
else()
  set(VANTIX_LIBRARIES_ARE_SHARED OFF)
  set(pkg_config_requires "simdjson spdlog sqlite3 libcurl libutf8proc liburiparser uuid")
endif()

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/package/VantixInAppMessageConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/VantixInAppMessageConfig.cmake"
  INSTALL_DESTINATION "${package_folder}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VantixInAppMessageConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/VantixInAppMessageConfig.cmake"
  "${PROJECT_BINARY_DIR}/VantixInAppMessageConfigVersion.cmake"
  DESTINATION "${package_folder}")

# The file names its folders from where it lies, so that an installed tree may be moved.
set(pkg_config_folder "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
foreach(what PREFIX INCLUDEDIR LIBDIR)
  set(full "${CMAKE_INSTALL_FULL_${what}}")
  if(what STREQUAL PREFIX)
    set(full "${CMAKE_INSTALL_PREFIX}")
  endif()
  cmake_path(RELATIVE_PATH full BASE_DIRECTORY "${pkg_config_folder}" OUTPUT_VARIABLE pkg_config_${what})
endforeach()
configure_file(
  "${PROJECT_SOURCE_DIR}/cmake/package/vantix-inapp.pc.in" "${PROJECT_BINARY_DIR}/vantix-inapp.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vantix-inapp.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(VANTIX_TOOL)
  install(TARGETS vantix-inapp RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  configure_file("${PROJECT_SOURCE_DIR}/docs/man/vantix-inapp.1.in" "${PROJECT_BINARY_DIR}/vantix-inapp.1" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/vantix-inapp.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endif()

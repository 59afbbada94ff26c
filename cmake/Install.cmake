# What `cmake --install` puts in place, and the Debian package made of it:
#   bin/vexplot, bin/vexplot-viewer
#   <libdir>/libvexplot.so, libvexplot-widget.so        (Vexplot::Control, Vexplot::Widget)
#   <libdir>/vexplot/libvexplot_opengl.so               (the engine plug-in)
#   <libdir>/cmake/Vexplot/, <libdir>/pkgconfig/        (find_package(Vexplot), pkg-config)
#   include/vexplot/                                    (the public headers)
#   the Python package vexplot, where Debian's python3 looks for it
include(CMakePackageConfigHelpers)

install(TARGETS vexplot vexplot-viewer RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS vexplot_opengl LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/vexplot)
install(TARGETS vexplot_shared EXPORT VexplotControlTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS vexplot_widget_shared EXPORT VexplotWidgetTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(CODE "
  cmake_policy(SET CMP0057 NEW)  # if(IN_LIST) in the script
  set(VEXPLOT_SOURCE_DIR \"${PROJECT_SOURCE_DIR}\")
  set(VEXPLOT_STAGE_DIR \"${CMAKE_BINARY_DIR}/install-headers\")
  set(VEXPLOT_INCLUDEDIR \"${CMAKE_INSTALL_INCLUDEDIR}\")
  include(\"${PROJECT_SOURCE_DIR}/cmake/InstallHeaders.cmake\")")

# The CMake package.
set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Vexplot)
install(EXPORT VexplotControlTargets NAMESPACE Vexplot:: DESTINATION ${cmake_dir})
install(EXPORT VexplotWidgetTargets NAMESPACE Vexplot:: DESTINATION ${cmake_dir})
configure_package_config_file(cmake/package/VexplotConfig.cmake.in
  ${CMAKE_BINARY_DIR}/VexplotConfig.cmake INSTALL_DESTINATION ${cmake_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/VexplotConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/VexplotConfig.cmake ${CMAKE_BINARY_DIR}/VexplotConfigVersion.cmake
        DESTINATION ${cmake_dir})

# pkg-config files, relocatable: the prefix is found from the file's place.
file(RELATIVE_PATH pc_to_prefix "/root/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/root")
foreach(pc vexplot vexplot-widget)
  configure_file(cmake/package/${pc}.pc.in ${CMAKE_BINARY_DIR}/${pc}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/${pc}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# The Python package goes where Debian's python3 looks for the prefix it is
# installed to: /usr/lib/python3/dist-packages for /usr (the .deb),
# <prefix>/lib/python3.X/dist-packages otherwise (/usr/local is on its path).
# Chosen when installing, as `cmake --install --prefix` and CPack name the
# prefix only then.
if(VEXPLOT_BUILD_PYTHON)
  install(CODE "
    if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
      set(python_dir \"\${CMAKE_INSTALL_PREFIX}/lib/python3/dist-packages/vexplot\")
    else()
      set(python_dir \"\${CMAKE_INSTALL_PREFIX}/lib/python${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}/dist-packages/vexplot\")
    endif()
    file(INSTALL DESTINATION \"\${python_dir}\" TYPE FILE FILES \"${PROJECT_SOURCE_DIR}/python/vexplot/__init__.py\")
    file(INSTALL DESTINATION \"\${python_dir}\" TYPE SHARED_LIBRARY FILES \"$<TARGET_FILE:_vexplot>\")
    file(RPATH_SET FILE \"\$ENV{DESTDIR}\${python_dir}/$<TARGET_FILE_NAME:_vexplot>\" NEW_RPATH \"\$ORIGIN/../../..\")")
endif()

include(cmake/Package.cmake)

# `cpack -G DEB` in the build folder: one Debian package, installed to /usr.
set(CPACK_PACKAGE_NAME vexplot)
set(CPACK_PACKAGE_VENDOR "Kestrune Corporation")
set(CPACK_PACKAGE_CONTACT "Vexplot maintainers <vexplot@kestrune.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Embeddable 3-D plotting control (Qt 6 widget, OpenGL engine, Python module)")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so dpkg-shlibdeps cannot see them: Mesa's EGL and
# software renderer for the engine, the fonts it draws with, and NumPy for
# the Python module.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libegl-mesa0, libgl1-mesa-dri, fonts-liberation, python3, python3-numpy")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xvfb")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/package/prerm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)

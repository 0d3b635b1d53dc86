# The Debian packages, one of each component that is installed; scripts/package builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvanta)
set(CPACK_PACKAGE_CONTACT "The Corvanta developers <corvanta@pewterlantern.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/Compress.cmake")
set(CPACK_COMPONENTS_GROUPING IGNORE)
get_cmake_property(CPACK_COMPONENTS_ALL COMPONENTS)
list(REMOVE_ITEM CPACK_COMPONENTS_ALL Unspecified)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(same_version "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME corvanta)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "corvanta-batch ${same_version}")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland")
set(CPACK_DEBIAN_DESKTOP_DESCRIPTION "design one corner of a car's suspension
Corvanta calculates a double wishbone or MacPherson strut corner over a grid
of wheel and rack travel and shows tables, plots and drawings in a window. In
its workbench every curve follows a pickup that is moved.")

set(CPACK_DEBIAN_BATCH_PACKAGE_NAME corvanta-batch)
set(CPACK_DEBIAN_BATCH_PACKAGE_SUGGESTS corvanta)
set(CPACK_DEBIAN_BATCH_DESCRIPTION "suspension results on the command line
corvanta-batch and corvanta-tool calculate the suspension documents of
Corvanta without a window: tables as text or workbooks, drawings, checks,
sweeps of many variants. The sample documents come with them.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-corvanta)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.11), python3 (<< 3.12), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-matplotlib, python3-distributed, python3-zarr, corvanta-batch")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "suspension corners in Python
Documents of Corvanta are read, changed, solved and studied from Python;
results are NumPy arrays.")

# What Debian wants of every package.
configure_file("${packaging}/debian/changelog.in" "${PROJECT_BINARY_DIR}/changelog" @ONLY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES "${packaging}/debian/copyright" "${PROJECT_BINARY_DIR}/changelog"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}"
    COMPONENT ${component})
endforeach()

include(CPack)

# `cpack` makes the Debian packages libloopwise1, libloopwise-dev, loopwise-tools and python3-loopwise. Use the preset
# `package`: its prefix /usr gives Debian's multiarch folders.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME loopwise)
set(CPACK_PACKAGE_CONTACT "The libloopwise authors <maintainers@loopwise.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_COMPONENTS_ALL runtime development)
if(LOOPWISE_PROGRAM)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(LOOPWISE_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# The project's own description stands above these.
set(about "Reads and writes chains, measures them, closes them into loops, and reduces
loops while their entanglement stays.")
set(runtime_package libloopwise${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(control_dir ${PROJECT_BINARY_DIR}/debian)
set(newer_functions ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
file(WRITE ${control_dir}/shlibs "libloopwise ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${newer_functions})\n")
file(WRITE ${control_dir}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control_dir}/shlibs ${control_dir}/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${about}
This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libloopwise-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "${about}
This package holds the header, the CMake package and the pkg-config file.")

if(LOOPWISE_PROGRAM)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME loopwise-tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_TOOLS_DESCRIPTION "${about}
This package holds the program loopwise.")
endif()

if(LOOPWISE_PYTHON)
  # The module is for one minor version of Python.
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-loopwise)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.${Python_VERSION_MINOR}), python3 (<< 3.${next_minor}), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-matplotlib, python3-pandas")
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION "${about}
This package holds the Python package loopwise.")
endif()
include(CPack)

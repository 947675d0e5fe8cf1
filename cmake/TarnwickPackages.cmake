# The Debian packages that cpack makes, one for each component; scripts/check-packages.sh builds and checks them.

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_CONTACT "Tarnwick maintainers <maintainers@tarnwick.invalid>")
# The summary of each package is the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_COMPONENTS_ALL runtime development)
if(TARNWICK_BUILD_DOCS)
    list(APPEND CPACK_COMPONENTS_ALL documentation)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE tarnwick)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtarnwick1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
# A program built with this version needs this or a later version of the same soname.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(
    CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "application foundations for Qt, shared library
A queue of asynchronous commands that a worker thread runs one at a time and
that clients follow through Qt signals, and small tools around it: text forms
of values, safe file names, natural sorting, logging categories, number bases,
colours and the comparison of JSON documents.
.
This package contains the shared library."
)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtarnwick-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libtarnwick1 (= ${version}), qt6-base-dev (>= ${TARNWICK_QT_MINIMUM})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libtarnwick-doc)
set(
    CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "application foundations for Qt, development files
A queue of asynchronous commands that a worker thread runs one at a time,
and small tools around it.
.
This package contains what is needed to build programs with the library: the
headers, the CMake package Tarnwick and the pkg-config module tarnwick."
)

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libtarnwick-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(
    CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION
    "application foundations for Qt, documentation
A queue of asynchronous commands that a worker thread runs one at a time,
and small tools around it.
.
This package contains the documentation of the library, as HTML and as Qt help
for Qt Assistant and Qt Creator."
)

# After the files of the components are installed, adds what Debian requires in every package.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/stage.cmake")
include(CPack)

# Installs the library, its headers, the CMake package, the pkg-config module and the printers for GDB. Included by
# src/CMakeLists.txt.

# A shared and a static library can be installed into one prefix: each has an export set and a pkg-config module of its own.
install(
    TARGETS Tarnwick
    EXPORT TarnwickTargets
    ARCHIVE COMPONENT development
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME COMPONENT runtime
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/tarnwick" COMPONENT development
)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/Tarnwick")
install(
    EXPORT TarnwickTargets
    FILE Tarnwick-${library_kind}-targets.cmake
    NAMESPACE Tarnwick::
    DESTINATION "${package_dir}"
    COMPONENT development
)
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/TarnwickConfig.cmake.in"
    TarnwickConfig.cmake
    INSTALL_DESTINATION "${package_dir}"
)
write_basic_package_version_file(TarnwickConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
    FILES "${CMAKE_CURRENT_BINARY_DIR}/TarnwickConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/TarnwickConfigVersion.cmake"
    DESTINATION "${package_dir}"
    COMPONENT development
)

# The pkg-config module computes the prefix from its own location, so an installation can be moved.
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
if(library_kind STREQUAL "shared")
    set(pkgconfig_module tarnwick)
    set(pkgconfig_cflags "")
else()
    set(pkgconfig_module tarnwick-static)
    set(pkgconfig_cflags " -DTARNWICK_STATIC_DEFINE")
endif()
get_target_property(pkgconfig_library Tarnwick OUTPUT_NAME)
configure_file("${PROJECT_SOURCE_DIR}/cmake/tarnwick.pc.in" ${pkgconfig_module}.pc @ONLY)
install(
    FILES "${CMAKE_CURRENT_BINARY_DIR}/${pkgconfig_module}.pc"
    DESTINATION "${pkgconfig_dir}"
    COMPONENT development
)

# GDB loads a script that is named after the library if the user has declared the folder safe. For a library under /usr,
# GDB also searches its own folder, which is always safe.
if(library_kind STREQUAL "shared" AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(gdb_dir "${CMAKE_INSTALL_LIBDIR}")
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set(gdb_dir "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}")
    endif()
    install(
        FILES "${PROJECT_SOURCE_DIR}/packaging/gdb/printers.py"
        DESTINATION "${gdb_dir}"
        RENAME "libTarnwick.so.${PROJECT_VERSION}-gdb.py"
        COMPONENT development
    )
endif()

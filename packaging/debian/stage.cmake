# Run by cpack: adds the files that Debian requires to each package, and strips the library.

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" name)
    set(package "${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
    set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr/share")

    file(COPY "${CMAKE_CURRENT_LIST_DIR}/copyright" DESTINATION "${share}/doc/${package}")
    file(COPY_FILE "${CMAKE_CURRENT_LIST_DIR}/changelog" "${share}/doc/${package}/changelog.Debian")
    execute_process(COMMAND gzip -9n "${share}/doc/${package}/changelog.Debian" COMMAND_ERROR_IS_FATAL ANY)

    set(overrides "${CMAKE_CURRENT_LIST_DIR}/${package}.lintian-overrides")
    if(EXISTS "${overrides}")
        file(MAKE_DIRECTORY "${share}/lintian/overrides")
        file(COPY_FILE "${overrides}" "${share}/lintian/overrides/${package}")
    endif()

    set(registration "${CMAKE_CURRENT_LIST_DIR}/${package}.doc-base")
    if(EXISTS "${registration}")
        file(MAKE_DIRECTORY "${share}/doc-base")
        file(COPY_FILE "${registration}" "${share}/doc-base/${package}")
    endif()
endforeach()

file(GLOB_RECURSE libraries "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/runtime/usr/lib*/*.so.${CPACK_PACKAGE_VERSION}")
execute_process(
    COMMAND strip --strip-unneeded --remove-section=.comment --remove-section=.note ${libraries}
    COMMAND_ERROR_IS_FATAL ANY
)

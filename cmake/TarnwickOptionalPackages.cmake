# Packages that the library itself does not need. If one is missing, the part of the build that needs it is left out, and
# the summary at the end of the configuration says so. With TARNWICK_REQUIRE_ALL a missing package is an error.
include(FeatureSummary)

# tarnwick_find_optional_package(<package> <purpose>): a macro, since find_package() sets variables of the caller.
macro(tarnwick_find_optional_package package purpose)
    set_package_properties(${package} PROPERTIES TYPE RECOMMENDED PURPOSE "${purpose}")
    if("${package}" MATCHES "^Qt6(.+)" AND TARNWICK_REQUIRE_ALL)
        find_package(Qt6 ${TARNWICK_QT_MINIMUM} QUIET REQUIRED COMPONENTS ${CMAKE_MATCH_1})
    elseif("${package}" MATCHES "^Qt6(.+)")
        find_package(Qt6 ${TARNWICK_QT_MINIMUM} QUIET OPTIONAL_COMPONENTS ${CMAKE_MATCH_1})
    elseif(TARNWICK_REQUIRE_ALL)
        find_package(${package} QUIET REQUIRED)
    else()
        find_package(${package} QUIET)
    endif()
endmacro()

function(tarnwick_report_missing_packages)
    feature_summary(
        WHAT RECOMMENDED_PACKAGES_NOT_FOUND
        DESCRIPTION "Not found (the parts that need them are left out):"
        INCLUDE_QUIET_PACKAGES
        QUIET_ON_EMPTY
    )
endfunction()

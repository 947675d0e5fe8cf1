# Warnings, definitions and sanitizers of the project's own targets. Clients of the library get none of them.

# Every target gets the sanitizers: a program that uses a sanitized library must be sanitized, too.
if(TARNWICK_SANITIZE)
    add_compile_options(-fsanitize=${TARNWICK_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TARNWICK_SANITIZE})
    if(TARNWICK_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

# tarnwick_compiler_settings(<target>): moc, the project's warnings, and Qt without its implicit conversions.
function(tarnwick_compiler_settings target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_definitions(
        ${target}
        PRIVATE
            QT_NO_KEYWORDS
            QT_NO_FOREACH
            QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_CAST_FROM_BYTEARRAY
            QT_NO_URL_CAST_FROM_STRING
            QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
            QT_DISABLE_DEPRECATED_BEFORE=0x060400
    )
    # clang-cl is left out: its -Wall means all warnings. GCC gets -Wshadow=local: its -Wshadow also warns about a
    # constructor's parameter that has the name of the field.
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT MSVC)
        target_compile_options(
            ${target}
            PRIVATE
                -Wall
                -Wextra
                -Wpedantic
                -Wcast-align
                -Wcast-qual
                -Wconversion
                -Wsign-conversion
                -Wold-style-cast
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                -Wundef
                -Wvla
                -Wzero-as-null-pointer-constant
                $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wshadow
                -Wshadow-field
                -Wshadow-uncaptured-local>
                $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local
                -Wlogical-op
                -Wsuggest-override>
                $<$<BOOL:${TARNWICK_WERROR}>:-Werror>
        )
    endif()
endfunction()

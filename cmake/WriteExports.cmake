# Writes OUTPUT, a linker version script. It names the classes and namespaces that public headers declare, and the linker
# exports those of their symbols that TARNWICK_EXPORT makes visible. Without the script, the library would also export
# instances of templates of Qt and the standard library.
# usage: cmake -DOUTPUT=<file> -P WriteExports.cmake -- <header>...

set(names)
set(is_header FALSE)
foreach(index RANGE 1 ${CMAKE_ARGC})
    set(argument "${CMAKE_ARGV${index}}")
    if(is_header AND argument)
        file(STRINGS "${argument}" lines REGEX "^(namespace [A-Za-z]+ |(class|struct) TARNWICK_EXPORT [A-Za-z]+)")
        foreach(line IN LISTS lines)
            string(REGEX REPLACE "^(namespace|class TARNWICK_EXPORT|struct TARNWICK_EXPORT) ([A-Za-z]+).*" "\\2" name "${line}")
            list(APPEND names ${name})
        endforeach()
    elseif(argument STREQUAL "--")
        set(is_header TRUE)
    endif()
endforeach()
list(REMOVE_DUPLICATES names)

# "*?for?": vtables, typeinfo and their names.
set(patterns)
foreach(name IN LISTS names)
    string(APPEND patterns "        ${name}::*;\n        *?for?${name};\n        *?for?${name}::*;\n")
endforeach()
file(WRITE "${OUTPUT}" "{\nglobal:\n    extern \"C++\" {\n${patterns}    };\nlocal:\n    *;\n};\n")

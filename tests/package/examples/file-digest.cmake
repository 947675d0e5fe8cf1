# Runs PROGRAM, which is file-digest, by EMULATOR if there is one, and fails unless the transcript is the text of EXPECTED.
set(folder "${WORK}/file-digest")
file(REMOVE_RECURSE "${folder}")
string(REPEAT "x" 196609 chunks)
foreach(name IN ITEMS "scan 10" "scan 9" .hidden deep/empty deep/skipped skipped/too)
    file(WRITE "${folder}/in/${name}" "${name}")
endforeach()
file(WRITE "${folder}/in/deep/empty" "")
file(WRITE "${folder}/in/deep/chunks" "${chunks}")

# run(<line> <command>...): appends the line, the output of the command, and its exit code. No argument may contain a
# semicolon, which separates arguments here.
function(run line)
    execute_process(
        COMMAND ${ARGN} WORKING_DIRECTORY "${folder}/in" OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code
    )
    string(REPLACE "\r\n" "\n" output "${output}")
    string(REPLACE "file-digest ${VERSION}\n" "file-digest VERSION\n" output "${output}")
    string(REGEX REPLACE ", [0-9.]+ s\n" ", ... s\n" output "${output}")
    set(transcript "${transcript}$ ${line}\n${output}-> ${code}\n" PARENT_SCOPE)
endfunction()

# run_digest(<argument>...)
macro(run_digest)
    string(JOIN " " line file-digest ${ARGN})
    run("${line}" ${EMULATOR} "${PROGRAM}" ${ARGN})
endmacro()

if(SYSTEM STREQUAL "common")
    run_digest()
    run_digest(--exclude skipped --exclude .hidden .)
    run_digest("scan 9" deep)
    run_digest(missing deep)
    run_digest(--unknown)
    run_digest(--version)
else()
    # Links are not followed, a name that is not UTF-8 is an error, and sha256sum reads the table.
    set(names "'a\\b' \"$(printf 'line\\nfeed')\" \"$(printf 'not UTF-8 \\377')\"")
    run("setup" sh -c "rm -r skipped deep && ln -s . circle && ln -s 'scan 9' link && touch ${names}")
    run_digest()
    set(table "s/^(.?[0-9a-f]{64})  FINISHED   /\\1  /p")
    set(verify "sha256sum --quiet -c") # without this, versions print a backslash in a name differently
    run("file-digest | ${verify}" sh -c "\"$0\" | sed -nE '${table}' | ${verify}" "${PROGRAM}")
    foreach(option IN ITEMS "" " --help")
        run("file-digest${option} > /dev/full" sh -c "\"$0\"${option} > /dev/full" "${PROGRAM}")
    endforeach()
    # The first file is done, so the second one, which takes seconds, is under way.
    set(interrupt [[
        mkdir ../long && touch ../long/1 ../long/3 && truncate -s 8G ../long/2 && mkfifo ../rows
        "$0" ../long >../rows &
        {
            read -r row && kill -INT $! && echo "$row"
            sed 's/[0-9]* bytes/... bytes/' | sort
        } <../rows
        wait $!
    ]])
    run("file-digest, interrupted" sh -c "${interrupt}" "${PROGRAM}")
endif()

file(READ "${EXPECTED}" expected)
if(NOT transcript STREQUAL expected)
    file(WRITE "${WORK}/file-digest.txt" "${transcript}")
    message(NOTICE "-- printed:\n${transcript}-- expected:\n${expected}")
    message(FATAL_ERROR "${PROGRAM} does not do what ${EXPECTED} says")
endif()

# Runs PROGRAM, by EMULATOR if there is one, and fails unless it succeeds and prints the text of EXPECTED.
execute_process(COMMAND ${EMULATOR} "${PROGRAM}" OUTPUT_VARIABLE output RESULT_VARIABLE result)
file(READ "${EXPECTED}" expected)
if(NOT result STREQUAL "0" OR NOT output STREQUAL expected)
    message(NOTICE "-- printed:\n${output}-- expected:\n${expected}-- exit code: ${result}")
    message(FATAL_ERROR "${PROGRAM} does not print what is in ${EXPECTED}")
endif()

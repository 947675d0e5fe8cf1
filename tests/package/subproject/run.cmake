# Configures, builds, runs and installs the subproject, and checks that nothing of the library is installed.
# Arguments: BY, add_subdirectory or FetchContent; SOURCE_DIR of the library; BUILD_DIR of the subproject; CONFIG; ARGUMENTS
# to configure a project; EMULATOR to run a program.

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(
    ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}" -B "${BUILD_DIR}" ${ARGUMENTS} "-DTARNWICK=${SOURCE_DIR}" -DBY=${BY}
    -DCMAKE_UNITY_BUILD=ON "-DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${BUILD_DIR}/bin"
)
run(${CMAKE_COMMAND} --build "${BUILD_DIR}" --config "${CONFIG}")
run(${EMULATOR} "${BUILD_DIR}/bin/subproject")

file(REMOVE_RECURSE "${BUILD_DIR}/prefix")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --config "${CONFIG}" --prefix "${BUILD_DIR}/prefix")
file(GLOB_RECURSE installed RELATIVE "${BUILD_DIR}/prefix" "${BUILD_DIR}/prefix/*")
if(NOT installed MATCHES "^subproject(\\.exe)?$")
    message(FATAL_ERROR "Installed besides the subproject: ${installed}")
endif()

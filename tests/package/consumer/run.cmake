# Installs the library into a fresh prefix, then configures, builds and runs the consumer project against it.
# Arguments: BUILD_DIR, CONFIG, GENERATOR, CXX, SANITIZE.

set(prefix "${BUILD_DIR}/consumer-prefix")
set(consumer_build "${BUILD_DIR}/consumer-build")

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${prefix}")
foreach(component IN ITEMS runtime development)
    run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --config "${CONFIG}" --prefix "${prefix}" --component ${component})
endforeach()

set(flags "")
if(SANITIZE)
    set(flags "-DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZE}")
endif()
run(
    ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}" -B "${consumer_build}" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DCMAKE_CXX_COMPILER=${CXX}" ${flags}
)
run(${CMAKE_COMMAND} --build "${consumer_build}" --config "${CONFIG}")
run("${consumer_build}/consumer")

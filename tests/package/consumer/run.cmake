# Installs the library into a prefix, then configures, builds and runs the consumer project with it.
# Arguments: KIND, "shared" or "static"; SOURCE_DIR and BUILD_DIR of the library; CONFIG; ARGUMENTS to configure a project;
# EMULATOR to run a program. The shared library comes from BUILD_DIR and goes into a fresh prefix. The static library is
# built here, and goes into the same prefix.

set(prefix "${BUILD_DIR}/consumer-prefix")
set(consumer_build "${BUILD_DIR}/consumer-${KIND}")

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(KIND STREQUAL "shared")
    file(REMOVE_RECURSE "${prefix}")
else()
    set(library_build "${BUILD_DIR}/static-library")
    run(
        ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${library_build}" ${ARGUMENTS} -DBUILD_SHARED_LIBS=OFF
        -DCMAKE_UNITY_BUILD=ON -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_EXAMPLES=OFF -DTARNWICK_BUILD_BENCHMARKS=OFF
    )
    run(${CMAKE_COMMAND} --build "${library_build}" --config "${CONFIG}")
    set(BUILD_DIR "${library_build}")
endif()
foreach(component IN ITEMS runtime development)
    run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --config "${CONFIG}" --prefix "${prefix}" --component ${component})
endforeach()

# The toolchain file of a cross-build may restrict the search for packages to roots of its own.
if(EMULATOR)
    file(GLOB_RECURSE config "${prefix}/*/TarnwickConfig.cmake")
    get_filename_component(config_dir "${config}" DIRECTORY)
    list(APPEND ARGUMENTS "-DTarnwick_DIR=${config_dir}")
endif()
run(
    ${CMAKE_COMMAND} --fresh -S "${CMAKE_CURRENT_LIST_DIR}" -B "${consumer_build}" ${ARGUMENTS} "-DCMAKE_PREFIX_PATH=${prefix}"
    -DKIND=${KIND}
)
run(${CMAKE_COMMAND} --build "${consumer_build}" --config "${CONFIG}")
if(CMAKE_HOST_WIN32)
    set(ENV{PATH} "${prefix}/bin;$ENV{PATH}")
endif()
set(program "${consumer_build}/consumer")
if(EXISTS "${program}.exe")
    string(APPEND program ".exe")
endif()
run(${EMULATOR} "${program}")

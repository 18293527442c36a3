# Installs the library into an empty folder, then builds and runs a stranger's project against it.
# Variables: BUILD (the library's build folder), EXAMPLE, WORK, CXX.

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(FATAL_ERROR "${command}: ${result}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
run(${CMAKE_COMMAND} -S ${EXAMPLE} -B ${WORK}/build -G Ninja -DCMAKE_CXX_COMPILER=${CXX}
    -DCMAKE_PREFIX_PATH=${WORK}/prefix)
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${WORK}/build/embed)
if(NOT output MATCHES "2 shapes, 1 fill")
    message(FATAL_ERROR "embed printed: ${output}")
endif()

# Installs the build into a scratch prefix and builds and runs examples/embed against what was installed there.
#
#   cmake -DBUILD=... -DSOURCE=... -DSCRATCH=... -DCOMPILER=... -DTYPE=... -DFLAGS=... -P embed.cmake
#
# SCRATCH is emptied first, so that no header of an earlier installation can help out.
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGV " " command)
        message("${output}")
        message(FATAL_ERROR "${command}: ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${SCRATCH}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${SCRATCH}/prefix")
run("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}/examples/embed" -B "${SCRATCH}/build"
    "-DCMAKE_PREFIX_PATH=${SCRATCH}/prefix" "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_BUILD_TYPE=${TYPE}"
    "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${CMAKE_COMMAND}" --build "${SCRATCH}/build")
foreach(url IN ITEMS "memory:" "sqlite:${SCRATCH}/sessions.db")
    run("${SCRATCH}/build/embed" "${url}")
    if(NOT output STREQUAL "gate.example.net\n")
        message(FATAL_ERROR "embed ${url} printed: ${output}")
    endif()
endforeach()

# The headers of the build must not be reachable from the installed package.
file(GLOB package "${SCRATCH}/prefix/lib*/cmake/ConnectDialog/*.cmake" "${SCRATCH}/prefix/lib/*/cmake/ConnectDialog/*.cmake")
if(NOT package)
    message(FATAL_ERROR "no package was installed")
endif()
foreach(file IN LISTS package)
    file(READ "${file}" text)
    string(FIND "${text}" "${SOURCE}" position)
    if(NOT position EQUAL -1)
        message(FATAL_ERROR "${file} refers to the source folder")
    endif()
endforeach()

# Installs the library into a scratch prefix, builds the examples against it as a project of their own, and lists the
# services of the sample. BUILD_DIR, SOURCE_DIR, SCRATCH and the COMPILER and FLAGS of the build are given.
file(REMOVE_RECURSE ${SCRATCH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR}/examples -B ${SCRATCH}/build -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix
    -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}")
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/list-services ${SOURCE_DIR}/samples/isdbt-sample.ts)

file(READ ${SOURCE_DIR}/tests/examples/list-services.txt expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "list-services prints\n${output}")
endif()

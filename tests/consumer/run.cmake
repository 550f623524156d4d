# Installs the library into a scratch prefix, takes the example out of the README, and builds and runs it there.
# BUILD_DIR, SOURCE_DIR, SCRATCH and the COMPILER and FLAGS of the build are given.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(READ ${SOURCE_DIR}/README.md readme)
if(NOT readme MATCHES "```cpp\n([^`]*)```")
  message(FATAL_ERROR "The README has no C++ example")
endif()
file(WRITE ${SCRATCH}/example.cpp "${CMAKE_MATCH_1}")

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR}/tests/consumer -B ${SCRATCH}/build
    -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix -DEXAMPLE=${SCRATCH}/example.cpp
    -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}")
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/consumer)

set(expected "service 23584: PMT on PID 257\n")
string(APPEND expected "ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!\n")
string(APPEND expected "PAT rejected: 2565\n")
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "The example prints\n${output}instead of\n${expected}")
endif()

# Installs the library into a scratch prefix, takes the example out of the README, and builds and runs it there.
# BUILD_DIR, SOURCE_DIR, SCRATCH and the COMPILER, FLAGS, TOOLCHAIN and EMULATOR of the build are given, the last two
# empty for the host itself.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

file(READ ${SOURCE_DIR}/README.md readme)
if(NOT readme MATCHES "```cpp\n([^`]*)```")
  message(FATAL_ERROR "The README has no C++ example")
endif()
file(WRITE ${SCRATCH}/example.cpp "${CMAKE_MATCH_1}")

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR}/tests/consumer -B ${SCRATCH}/build
    -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix -DEXAMPLE=${SCRATCH}/example.cpp
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}")
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
file(GLOB_RECURSE library ${SCRATCH}/prefix/*/libQuorISDBT.*)
list(GET library 0 library)
get_filename_component(library_dir ${library} DIRECTORY)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${library_dir} ${EMULATOR} ${SCRATCH}/build/consumer)

set(expected_output "service 23584: PMT on PID 257\n")
string(CONCAT expected_errors
  "ISDBTUtils: TISDBTTable::parse: Section length exceeds data length. Aborting!\n"
  "PAT rejected: 2565\n")
if(NOT output STREQUAL expected_output OR NOT errors STREQUAL expected_errors)
  message(FATAL_ERROR "The example prints\n${output}and on standard error\n${errors}")
endif()

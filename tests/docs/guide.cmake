# Installs the library where the guide does, and follows PAGE from the heading PART on. BUILD_DIR, SOURCE_DIR and SCRATCH
# are given, and MAKE_RECORDING for a page that has a recording.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
file(CREATE_LINK ${SOURCE_DIR} ${SCRATCH}/quor-isdbt SYMBOLIC)
set(ENV{HOME} ${SCRATCH})

execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/quor-isdbt-installed
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
if(MAKE_RECORDING)
  execute_process(COMMAND ${MAKE_RECORDING} ${SCRATCH}/recording.ts COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND ${SOURCE_DIR}/tests/docs/follow ${SOURCE_DIR}/docs/${PAGE} ${SCRATCH} ${PART}
                COMMAND_ERROR_IS_FATAL ANY)

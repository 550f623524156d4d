# Installs the library where the guide does, and follows the guide from there on. BUILD_DIR, SOURCE_DIR and SCRATCH are
# given.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
file(CREATE_LINK ${SOURCE_DIR} ${SCRATCH}/quor-isdbt SYMBOLIC)
set(ENV{HOME} ${SCRATCH})

execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/quor-isdbt-installed
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${SOURCE_DIR}/tests/docs/follow ${SOURCE_DIR}/docs/guide.md ${SCRATCH} "## Your program"
                COMMAND_ERROR_IS_FATAL ANY)

# What a receiver gets, unless it asks for something else: it is short of flash, not of time.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE MinSizeRel CACHE STRING "Build type" FORCE)
endif()

# Every target of the project links quor_build_options: language level and warnings.
add_library(quor_build_options INTERFACE)
target_compile_features(quor_build_options INTERFACE cxx_std_17)
# A source may name what is its own as another does that it is compiled with.
target_compile_options(quor_build_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion
                       $<$<NOT:$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>>:-Wshadow>
                       $<$<BOOL:${QUOR_ISDBT_WERROR}>:-Werror>)

if(QUOR_ISDBT_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
elseif(QUOR_ISDBT_SANITIZE_THREADS)
  set(sanitizers -fsanitize=thread -fno-sanitize-recover=all)
endif()
add_compile_options(${sanitizers})
add_link_options(${sanitizers})

# For what runs once, and need not be fast: it is built in half the time. AddressSanitizer meets a bad pointer, too; the
# questions left out here, before each access, would take as long to compile as all the rest.
set(quor_built_quickly -O0 "$<$<BOOL:${QUOR_ISDBT_SANITIZE}>:-fno-sanitize=alignment,null,vptr>")

# For what is fuzzed: it reports what an input covers, and soon.
set(quor_fuzzed "$<$<BOOL:${QUOR_ISDBT_BUILD_FUZZERS}>:-O1;-fsanitize=fuzzer-no-link>")

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE AND PROJECT_IS_TOP_LEVEL)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

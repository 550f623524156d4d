# zlib of the machine that is built for. Its development package brings a C library, which the cross compilers have
# already: for other machines the headers are this machine's, and the library is the one that programs load.
if(CMAKE_TOOLCHAIN_FILE)
  find_library(ZLIB_LIBRARY libz.so.1 PATHS /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE} NO_DEFAULT_PATH)
endif()
find_package(ZLIB QUIET)
if(CMAKE_TOOLCHAIN_FILE AND ZLIB_FOUND)
  target_compile_options(ZLIB::ZLIB INTERFACE "SHELL:-idirafter /usr/include/x86_64-linux-gnu")
endif()

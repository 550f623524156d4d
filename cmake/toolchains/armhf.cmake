# The receiver's machine: Debian's cross compiler, Debian's libraries for armhf, and qemu-user to run what it builds.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
# Notes on what older compilers pass otherwise say nothing to those who build everything with this one.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

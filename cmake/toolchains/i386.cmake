# 32 bits with the host's own compiler, which alone looks for <asm> and <gnu> under the host's triplet.
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_CXX_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")

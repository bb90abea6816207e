# Lets CMake configure the program as for macOS on a system that is none: enough
# to see what would be built and installed, not to build it.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_OSX_SYSROOT /)
set(CMAKE_CXX_COMPILER_WORKS TRUE)
set(CMAKE_CXX_ABI_COMPILED TRUE)
set(CMAKE_SIZEOF_VOID_P 8)
set(CMAKE_INSTALL_NAME_TOOL true)
set(TARNWICK_MACDEPLOYQT macdeployqt CACHE STRING "The tool, which stands on the Mac")

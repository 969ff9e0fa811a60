# Cross-compiles the suite for Windows with mingw-w64, POSIX thread model. Included by the toolchain file of each
# architecture, which names the triplet.
set(CMAKE_SYSTEM_NAME Windows)

set(CMAKE_C_COMPILER ${ZO_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZO_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${ZO_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZO_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

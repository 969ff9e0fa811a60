# 64-bit Windows.
set(ZO_ARCH x64)
set(ZO_TRIPLET x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

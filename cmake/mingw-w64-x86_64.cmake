# Cross-build for 64-bit Windows with mingw-w64 (posix threads); tests run under Wine.
set(QVX_MINGW_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)

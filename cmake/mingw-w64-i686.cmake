# Cross-build for 32-bit Windows with mingw-w64 (posix threads): the layouts of 32-bit hosts.
# Compiled only; its programs would need a 32-bit Wine, which this machine does not have.
set(QVX_MINGW_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)

# The same for 32-bit Windows, where callers align the stack to 4 bytes only: the vector instructions
# in the sources need 16.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-x86_64.cmake)

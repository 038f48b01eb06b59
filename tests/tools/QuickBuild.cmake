# The toolchain file of the applications that tests build. They are built to see that it works and run once, so nothing is
# optimised, no debug information is made, the sources of a plug-in compile together, and its long headers once for all
# builds. That their sources also compile one by one, is checked apart (quick_build.py).
set(CMAKE_UNITY_BUILD ON)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 0)
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g0" CACHE STRING "" FORCE)
set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/QuickHeaders.cmake)

# Cross build: cmake --preset windows-x64 && cmake --build --preset windows-x64
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOOL_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TOOL_PREFIX}-gcc-posix)  # GoogleTest asks for one
set(CMAKE_CXX_COMPILER ${TOOL_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TOOL_PREFIX}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${TOOL_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-x64)
# What is built must run on a system that has no MinGW libraries, and be the same each time. Not through the variables of
# the first configuration: a tree that is older than a line here would go on without it.
add_link_options(-static -Wl,--no-insert-timestamp)

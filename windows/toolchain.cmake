# Cross build for Windows x64 with MinGW-w64's compiler in its POSIX-threads kind; what is built runs under Wine.
# TAV_WINDOWS_LIBRARIES is the folder that make-libraries named; making it works without.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Headers, libraries and packages are those of Windows alone; programs that the build calls are those of here.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

if(TAV_WINDOWS_LIBRARIES)
    set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAV_WINDOWS_LIBRARIES)
    list(APPEND CMAKE_FIND_ROOT_PATH "${TAV_WINDOWS_LIBRARIES}")
    set(CMAKE_PREFIX_PATH "${TAV_WINDOWS_LIBRARIES}")
    set(QT_HOST_PATH /usr)
    # As which Wine shows the root of the disk: a path without drive is one of the current drive.
    set(TAV_DRIVE "Z:")
    set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/run" "${TAV_WINDOWS_LIBRARIES}")
endif()

# Toolchain for 64-bit Windows: mingw-w64 on Debian, with the libraries that packaging/windows/libraries built into
# $ZEP_WINDOWS_LIBRARIES. Qt's tools (moc, rcc) are the host's.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(compiler x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${compiler}-gcc-posix)
set(CMAKE_CXX_COMPILER ${compiler}-g++-posix)
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0A00") # Windows 10 is the oldest one
set(CMAKE_RC_COMPILER ${compiler}-windres)
set(CMAKE_FIND_ROOT_PATH $ENV{ZEP_WINDOWS_LIBRARIES} /usr/${compiler})
set(CMAKE_PREFIX_PATH $ENV{ZEP_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/*/cmake)
list(FILTER QT_HOST_PATH_CMAKE_DIR INCLUDE REGEX "-linux-gnu/cmake$")
list(GET QT_HOST_PATH_CMAKE_DIR 0 QT_HOST_PATH_CMAKE_DIR)

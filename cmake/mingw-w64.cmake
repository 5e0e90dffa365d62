# Builds for 64-bit Windows with Debian's MinGW-w64. tools/windows/setup installs it, makes the static
# Qt and tells where it is.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_OBJDUMP x86_64-w64-mingw32-objdump)

# Nothing beside the file itself: the compiler's own run-time libraries are linked in, and so is Qt,
# whose symbols would make half the file.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -s")
endforeach()

# Taken from the environment once, and kept for every later run of CMake in this build folder.
foreach(folder QT_WIN64 IMAGE_FORMATS_WIN64)
  if(NOT MORVEX_${folder})
    set(MORVEX_${folder} "$ENV{MORVEX_${folder}}" CACHE PATH "Made by tools/windows/setup")
  endif()
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MORVEX_${folder})
endforeach()
if(NOT EXISTS "${MORVEX_QT_WIN64}/lib/cmake/Qt5/Qt5Config.cmake")
  message(FATAL_ERROR "No Qt for Windows at \"${MORVEX_QT_WIN64}\": use ./test windows, "
    "or eval \"$(tools/windows/setup)\"")
endif()

set(CMAKE_PREFIX_PATH ${MORVEX_QT_WIN64})
set(CMAKE_FIND_ROOT_PATH ${MORVEX_QT_WIN64} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

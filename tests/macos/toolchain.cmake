# Compiles and links for macOS on another system, against the declarations and stubs of this folder.
# What comes out proves that everything fits together; it runs nowhere and is never shipped.
#
#   cmake -S . -B build/macos-arm64 -DCMAKE_TOOLCHAIN_FILE=tests/macos/toolchain.cmake
#     -DVELOTAP_MACOS_ARCH=arm64 -DVELOTAP_MACOS_STUBS=folder
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(VELOTAP_MACOS_ARCH "arm64" CACHE STRING "arm64 or x86_64")
set(VELOTAP_MACOS_STUBS "" CACHE PATH "What stubs.py made")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELOTAP_MACOS_ARCH VELOTAP_MACOS_STUBS)

set(CMAKE_OSX_DEPLOYMENT_TARGET 13.3 CACHE STRING "")
set(CMAKE_OSX_ARCHITECTURES ${VELOTAP_MACOS_ARCH} CACHE STRING "")
set(CMAKE_OSX_SYSROOT ${VELOTAP_MACOS_STUBS} CACHE PATH "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

find_program(VELOTAP_CLANG NAMES clang-14 REQUIRED)
find_program(VELOTAP_CLANGXX NAMES clang++-14 REQUIRED)
find_program(VELOTAP_LD64 NAMES ld64.lld-14 REQUIRED)
set(CMAKE_C_COMPILER ${VELOTAP_CLANG})
set(CMAKE_CXX_COMPILER ${VELOTAP_CLANGXX})
set(CMAKE_OBJCXX_COMPILER ${VELOTAP_CLANGXX})
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${VELOTAP_MACOS_ARCH}-apple-macos13.3)
endforeach()
# On a Mac it follows from the version of the system, which is asked of a program.
foreach(language C CXX OBJCXX)
  set(CMAKE_SHARED_LIBRARY_RUNTIME_${language}_FLAG "-Wl,-rpath,")
endforeach()
find_program(CMAKE_AR NAMES llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB NAMES llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool-14 REQUIRED)

set(here ${CMAKE_CURRENT_LIST_DIR}/declarations)
set(library "-Qunused-arguments -nostdlibinc -isystem ${here}/shims -isystem /usr/include/x86_64-linux-musl -D_GNU_SOURCE -isystem ${here}/frameworks -Wunguarded-availability")
set(CMAKE_C_FLAGS_INIT "${library}")
set(CMAKE_CXX_FLAGS_INIT "-nostdinc++ -isystem /usr/lib/llvm-14/include/c++/v1 ${library}")
set(CMAKE_OBJCXX_FLAGS_INIT "${CMAKE_CXX_FLAGS_INIT} -Wundeclared-selector")
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-fuse-ld=${VELOTAP_LD64} -mlinker-version=609 -nodefaultlibs -lSystem -lc++ -lobjc")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# One language level, one set of warnings, one compiler cache for everything that is built here.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(TESSARO_CCACHE ccache)
if(TESSARO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${TESSARO_CCACHE})
endif()

add_library(tessaro_warnings INTERFACE)
# GCC 12 finds overlapping and endless copies in std::string's own operator+ when it optimises (its bug 105651).
target_compile_options(tessaro_warnings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wno-sign-conversion -Werror "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds>")

if(TESSARO_SANITIZE)
  # The objects that stand for those of the spreadsheet program are made as it runs and have no type information.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(TESSARO_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(TESSARO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

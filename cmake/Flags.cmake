# Flags that every target of this project shares.
add_library(tslbl_flags INTERFACE)
target_compile_options(tslbl_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  # g++ 12 sees strings overlap where a literal is put before one (its bug 105651).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # A fused multiply-add rounds once where the source rounds twice: off, so that
  # numbers do not depend on the compiler or the machine.
  -ffp-contract=off)
if(TSLBL_WERROR)
  target_compile_options(tslbl_flags INTERFACE -Werror)
endif()
if(TSLBL_SANITIZE)
  target_compile_options(tslbl_flags INTERFACE
    -fsanitize=${TSLBL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tslbl_flags INTERFACE -fsanitize=${TSLBL_SANITIZE})
endif()
if(TSLBL_SANITIZE STREQUAL thread)
  # The packaged parallel library is not built with the sanitizer: a stand-in takes its place.
  target_include_directories(tslbl_flags BEFORE INTERFACE ${PROJECT_SOURCE_DIR}/tests/tsan)
endif()

# What was compiled before is not compiled again, in whatever build folder.
find_program(TSLBL_CCACHE ccache)
if(TSLBL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without these two ccache leaves everything alone that uses a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${TSLBL_CCACHE})
endif()

# SPDX-License-Identifier: GPL-3.0-or-later
# What makes a fault of ours, or of a decoder, an end instead of a way in. One set of flags for the package, the tests and
# whoever builds it: what is shipped is what was tested. tests/package/hardened.py reads them off the built program.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported(LANGUAGES CXX)

# The sanitizers bring their own checks, which these would hide from them.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  return()
endif()

# The highest level that compiler and C library know; it needs an optimising build. What a distribution's compiler defines
# by itself goes first.
set(CMAKE_REQUIRED_QUIET ON)
check_cxx_source_compiles("
  #include <features.h>
  #if !__has_builtin(__builtin_dynamic_object_size) || !__GLIBC_PREREQ(2, 34)
  #error level 3 is not known
  #endif
  int main() { return 0; }" CORVANE_FORTIFY_3)
if(NOT WIN32)
  add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
                      $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=$<IF:$<BOOL:${CORVANE_FORTIFY_3}>,3,2>>)
endif()
add_compile_definitions(_GLIBCXX_ASSERTIONS)

set(flags stack-protector-strong)
if(NOT WIN32)  # there each page of a stack is probed anyway, and the compiler fails over some functions with this flag
  list(APPEND flags stack-clash-protection)
endif()
foreach(flag ${flags})
  check_cxx_compiler_flag(-f${flag} CORVANE_HAS_${flag})
  if(CORVANE_HAS_${flag})
    add_compile_options(-f${flag})
  endif()
endforeach()
if(WIN32)
  add_link_options(-fstack-protector-strong LINKER:--dynamicbase,--nxcompat,--high-entropy-va)
else()
  # Indirect calls and returns are checked by the processor: one flag for each family of them.
  foreach(option -fcf-protection=full -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER ${option} name)
    check_cxx_compiler_flag(${option} CORVANE_HAS${name})
    if(CORVANE_HAS${name})
      add_compile_options(${option})
    endif()
  endforeach()
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack,-z,separate-code)
endif()

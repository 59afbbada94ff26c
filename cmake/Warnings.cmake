# Warnings for every target of the project (not for third-party code).
function(vexplot_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wcast-align -Wformat=2
    -Wimplicit-fallthrough -Wmissing-declarations -Wundef)
  if(VEXPLOT_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  # GCC 12 reports members of a std::variant alternative that is not the
  # active one as "may be used uninitialized" once Variant copies are
  # inlined at -O2 and above (every dispatch handler trips it). The flow
  # analysis is wrong there; other compilers and -O0 keep the check.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
  endif()
endfunction()

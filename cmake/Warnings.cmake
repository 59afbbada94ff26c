# Warnings for every target of the project (not for third-party code).
function(vexplot_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wcast-align -Wformat=2
    -Wimplicit-fallthrough -Wmissing-declarations -Wundef)
  if(VEXPLOT_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

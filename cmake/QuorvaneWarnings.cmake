# One warning set for the library, its tests, benchmarks and examples.
function(quorvane_set_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
  if(QUORVANE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

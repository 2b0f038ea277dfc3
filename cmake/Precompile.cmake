# ulk_precompile(<target> <header>...) compiles headers once for all sources of a target. A source still includes what it
# uses itself. Both options let a compiler cache know one such build from another.
function(ulk_precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -fpch-preprocess)
  else()
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()

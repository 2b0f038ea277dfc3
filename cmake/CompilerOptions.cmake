# Flags that hold for every target of this project; targets link ulk_options to get them.
add_library(ulk_options INTERFACE)

target_compile_options(ulk_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  # Fused multiply-add would change last bits of results that are defined in plain single precision.
  -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # At -O3 g++ 12 takes the last release of a counted holder for a use of what an earlier one could have deleted, and
  # sees overlapping copies inside the concatenation of strings.
  target_compile_options(ulk_options INTERFACE -Wno-use-after-free -Wno-restrict)
endif()

if(ULK_WERROR)
  target_compile_options(ulk_options INTERFACE -Werror)
endif()

if(ULK_SANITIZE)
  target_compile_options(ulk_options INTERFACE
    -fsanitize=${ULK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # Division by zero and float-to-float overflow are defined by IEEE 754 and wanted here: infinities and NaN propagate.
  target_compile_options(ulk_options INTERFACE -fno-sanitize=float-divide-by-zero)
  target_link_options(ulk_options INTERFACE -fsanitize=${ULK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The checks that the sanitizers insert make g++ 12 see uninitialized values inside the standard library's headers.
    target_compile_options(ulk_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

if(ULK_BUILD_FUZZERS)
  # Coverage counters for the fuzz targets, without a main of libFuzzer in everything else.
  target_compile_options(ulk_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(ulk_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What every test finds in its environment: the software GL driver, the locales of the file tests, the options of the
# sanitizers.

# The locales are compiled into the build folder, so nothing of the system is changed. C.UTF-8 comes with it.
set(ulk_locale_dir ${CMAKE_CURRENT_BINARY_DIR}/locale)
set(ulk_locales)
find_program(LOCALEDEF localedef)
if(NOT LOCALEDEF OR NOT EXISTS /usr/share/i18n/locales/ja_JP)
  message(FATAL_ERROR "The tests need localedef and the locale definitions of the package locales.")
endif()
# The Japanese code page is there for its characters that end in a backslash.
foreach(locale de_DE.UTF-8 ja_JP.UTF-8 ja_JP.WINDOWS-31J)
  string(REGEX MATCH "^[^.]+" language ${locale})
  string(REGEX REPLACE "^[^.]+\\." "" charmap ${locale})
  set(compiled ${ulk_locale_dir}/${locale}/LC_NUMERIC)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ulk_locale_dir}
    COMMAND ${LOCALEDEF} --no-archive -i ${language} -f ${charmap} ${ulk_locale_dir}/${locale}
    COMMENT "Compiling the locale ${locale}"
    VERBATIM)
  list(APPEND ulk_locales ${compiled})
endforeach()
add_custom_target(ulk_test_locales ALL DEPENDS ${ulk_locales})

set(ulk_test_environment
  GALLIUM_DRIVER=llvmpipe
  LIBGL_ALWAYS_SOFTWARE=1
  LOCPATH=${ulk_locale_dir}:/usr/lib/locale)

if(ULK_SANITIZE)
  list(APPEND ulk_test_environment
    # The drivers are loaded at run time and have thread-local variables. What the interception guesses of their blocks sent
    # the leak checker to wild addresses, in about one run of a thousand.
    ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1:intercept_tls_get_addr=0
    LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1)
endif()

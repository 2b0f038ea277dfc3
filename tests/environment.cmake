# What every test finds in its environment: the software GL driver, the locales of the file tests, the options of the
# sanitizers.

# The locales are compiled into the build folder, so nothing of the system is changed. C.UTF-8 comes with it.
set(ulk_locale_dir ${CMAKE_CURRENT_BINARY_DIR}/locale)
set(ulk_locales)
find_program(LOCALEDEF localedef)
if(NOT LOCALEDEF OR NOT EXISTS /usr/share/i18n/locales/ja_JP)
  message(FATAL_ERROR "The tests need localedef and the locale definitions of the package locales.")
endif()
foreach(locale de_DE ja_JP)
  set(compiled ${ulk_locale_dir}/${locale}.UTF-8/LC_NUMERIC)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ulk_locale_dir}
    COMMAND ${LOCALEDEF} --no-archive -i ${locale} -f UTF-8 ${ulk_locale_dir}/${locale}.UTF-8
    COMMENT "Compiling the locale ${locale}.UTF-8"
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
    ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1
    LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1)
endif()

# One helper for every test of the project: it links the libraries under
# test, runs windows offscreen, and tells the test where its data lives.
set(QUENBY_TEST_DATA_DIR ${CMAKE_SOURCE_DIR}/tests/data)
set(QUENBY_SAMPLES_DIR ${CMAKE_SOURCE_DIR}/samples)
set(QUENBY_LANG_DIR ${CMAKE_SOURCE_DIR}/lang)

function(quenby_test_environment target)
  set(runtime_dir ${CMAKE_BINARY_DIR}/test-runtime)
  file(MAKE_DIRECTORY ${runtime_dir})
  file(CHMOD ${runtime_dir} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
  target_compile_definitions(${target} PRIVATE
    QUENBY_TEST_DATA_DIR="${QUENBY_TEST_DATA_DIR}"
    QUENBY_SAMPLES_DIR="${QUENBY_SAMPLES_DIR}"
    QUENBY_LANG_DIR="${QUENBY_LANG_DIR}")
  set_property(TARGET ${target} PROPERTY QUENBY_TEST_ENV
    "QT_QPA_PLATFORM=offscreen;XDG_RUNTIME_DIR=${runtime_dir};ASAN_OPTIONS=detect_leaks=1;UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
endfunction()

# quenby_add_gtest(name LIBS lib... SOURCES src...): a GoogleTest binary for
# model code. Model tests carry the label "model" so the sanitizer build can
# run them alone.
function(quenby_add_gtest name)
  cmake_parse_arguments(ARG "" "" "LIBS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} quenby_testsupport quenby_gtest_main GTest::gtest quenby_warnings)
  quenby_test_environment(${name})
  get_property(env TARGET ${name} PROPERTY QUENBY_TEST_ENV)
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    TEST_PREFIX "${name}."
    PROPERTIES LABELS model ENVIRONMENT "${env}")
  quenby_add_locale_runs(${name} model)
endfunction()

# The whole binary once more under a French and a Polish locale, each run its
# own test: numbers must read and write the same whatever the desktop's
# locale. The binaries take the locale from the environment at start, as the
# program does.
function(quenby_add_locale_runs name label)
  get_property(env TARGET ${name} PROPERTY QUENBY_TEST_ENV)
  foreach(locale fr_FR pl_PL)
    add_test(NAME ${name}.${locale} COMMAND ${name})
    set_tests_properties(${name}.${locale} PROPERTIES
      LABELS "locale;${label}"
      ENVIRONMENT "${env};LC_ALL=${locale}.UTF-8;LANG=${locale}.UTF-8")
  endforeach()
endfunction()

# quenby_add_qtest(name LIBS lib... SOURCES src...): a Qt Test binary for a
# window, run headless.
function(quenby_add_qtest name)
  cmake_parse_arguments(ARG "" "" "LIBS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} quenby_testsupport Qt6::Test quenby_warnings)
  quenby_test_environment(${name})
  get_property(env TARGET ${name} PROPERTY QUENBY_TEST_ENV)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES LABELS window ENVIRONMENT "${env}")
  quenby_add_locale_runs(${name} window)
endfunction()

include(GoogleTest)

# One project-wide limit for a single test case; waits inside tests use PxTest::WAIT_MS.
set(PARVEX_TEST_TIMEOUT 120)

# px_add_test(<name> LABEL <subsystem> SOURCES <file>... [LIBS <lib>...])
#
# A GoogleTest executable linked with the shared test support (its main() sets up an offscreen
# QApplication, the C locale and a throw-away settings scope). Every test case becomes a CTest test
# labelled with the subsystem, so `ctest -L comm` runs one area.
function(px_add_test aName)
  cmake_parse_arguments(A "" "LABEL" "SOURCES;LIBS" ${ARGN})
  add_executable(${aName} ${A_SOURCES})
  target_link_libraries(${aName} PRIVATE PxTestMain PxTestSupport ${A_LIBS})
  # A source added to an existing suite must reach the moc too (see the library helper).
  px_refresh_moc_on_new_sources(${aName} "${A_SOURCES}")
  gtest_discover_tests(${aName}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES
      LABELS "${A_LABEL}"
      TIMEOUT ${PARVEX_TEST_TIMEOUT}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()


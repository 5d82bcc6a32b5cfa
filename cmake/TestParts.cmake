# Read by CTest: makes a test of each source file of a GoogleTest program, PREFIX/FILE, which runs the cases that stand in
# it. One start of the program for each case would be dear under Wine; one for all would say too little.
#
# With V5_TESTS in the environment, a part of a case's full name, a test runs the cases only that have it and gets it as
# a label, so that `ctest -L` finds the test. A test whose own labels have it runs whole.
#
#   PREFIX   what the tests' names begin with
#   COMMAND  the program and what starts it, as a list
#   SOURCES  its sources, those of its own in FOLDER
#   LABELS, PROPERTIES  of each test; PROPERTIES as set_tests_properties takes them
set(wanted "$ENV{V5_TESTS}")
foreach(source IN LISTS SOURCES)
  get_filename_component(source "${source}" ABSOLUTE BASE_DIR "${FOLDER}")
  get_filename_component(name "${source}" NAME_WE)
  set(test "${PREFIX}/${name}")
  set(labels ${LABELS} "${test}")
  set(cases)
  file(STRINGS "${source}" lines REGEX "^ *TEST(_F|_P)?\\(")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^TEST[_FP]*\\(([A-Za-z0-9_]+), *([A-Za-z0-9_]+)\\)")
      message(FATAL_ERROR "${source}: a case must stand on one line: ${line}")
    endif()
    set(case "${CMAKE_MATCH_1}.${CMAKE_MATCH_2}")
    string(FIND "${labels};${case}" "${wanted}" found)
    if(NOT found EQUAL -1)
      if(line MATCHES "^TEST_P")
        set(case "*/${case}/*")
      endif()
      list(APPEND cases "${case}")
    endif()
  endforeach()
  if(cases)
    list(JOIN cases ":" cases)
    add_test("${test}" ${COMMAND} --gtest_brief=1 "--gtest_filter=${cases}")
    set_tests_properties("${test}" PROPERTIES LABELS "${labels};${wanted}" ${PROPERTIES})
  endif()
endforeach()

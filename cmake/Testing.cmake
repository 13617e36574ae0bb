# eventsystem_test(NAME name SOURCES file... [LIBRARIES library...] [LABELS label...])
# builds one GoogleTest program and registers each of its tests with CTest. Programs with the
# label "threads" are also what the target tests_with_threads builds.

find_package(GTest REQUIRED)
include(GoogleTest)

# The test framework's headers are most of what a test compiles, so they are compiled once.
file(WRITE ${PROJECT_BINARY_DIR}/TestingHeaders.cpp "")
add_executable(eventsystem_testing_headers ${PROJECT_BINARY_DIR}/TestingHeaders.cpp)
# A test's own code is compiled once and run once: its optimisation costs more than it saves.
set(EVENTSYSTEM_TESTING_OPTIONS -O0 -U_FORTIFY_SOURCE)
target_compile_options(eventsystem_testing_headers PRIVATE ${EVENTSYSTEM_TESTING_OPTIONS})
target_link_libraries(eventsystem_testing_headers
  PRIVATE GTest::gmock_main eventsystem_settings)
target_precompile_headers(eventsystem_testing_headers
  PRIVATE <gmock/gmock.h> <gtest/gtest.h>)

add_custom_target(tests_with_threads)

function(eventsystem_test)
  cmake_parse_arguments(TEST "" "NAME" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  add_executable(${TEST_NAME} ${TEST_SOURCES})
  target_include_directories(${TEST_NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${TEST_NAME}
    PRIVATE ${TEST_LIBRARIES} GTest::gmock_main eventsystem_settings)
  target_compile_options(${TEST_NAME} PRIVATE ${EVENTSYSTEM_TESTING_OPTIONS})
  target_precompile_headers(${TEST_NAME} REUSE_FROM eventsystem_testing_headers)
  if("threads" IN_LIST TEST_LABELS)
    add_dependencies(tests_with_threads ${TEST_NAME})
  endif()
  # Tests of the cluster wait most of the time, for servers to start, to answer and to elect: three
  # of them run in the place of one other test (the presets have six places).
  set(weight 3)
  if(TEST_LABELS MATCHES cluster)
    set(weight 1)
  endif()
  gtest_discover_tests(${TEST_NAME}
    DISCOVERY_TIMEOUT 60
    TEST_LIST ${TEST_NAME}_tests
    PROPERTIES TIMEOUT 300 PROCESSORS ${weight})
  # The properties above cannot be lists, so the labels are set when CTest knows the tests.
  set(file ${CMAKE_CURRENT_BINARY_DIR}/${TEST_NAME}_labels.cmake)
  file(CONFIGURE OUTPUT ${file} @ONLY CONTENT [[
if(@TEST_NAME@_tests)
  set_tests_properties(${@TEST_NAME@_tests} PROPERTIES LABELS "@TEST_LABELS@")
endif()
]])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${file})
endfunction()

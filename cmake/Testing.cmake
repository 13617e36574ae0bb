# eventsystem_test(NAME name SOURCES file... [LIBRARIES library...] [LABELS label...])
# builds one GoogleTest program and registers each of its tests with CTest.

find_package(GTest REQUIRED)
include(GoogleTest)

function(eventsystem_test)
  cmake_parse_arguments(TEST "" "NAME" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  add_executable(${TEST_NAME} ${TEST_SOURCES})
  target_include_directories(${TEST_NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${TEST_NAME}
    PRIVATE ${TEST_LIBRARIES} GTest::gmock_main eventsystem_settings)
  gtest_discover_tests(${TEST_NAME}
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300 LABELS "${TEST_LABELS}")
endfunction()

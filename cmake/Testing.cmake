# larkspool_test(NAME sources... [LINK libraries...] [LABELS labels...]
#                [TIMEOUT seconds] [ENVIRONMENT var=value...])
# makes one GoogleTest program and registers it with CTest as one test.
include(CMakeParseArguments)

function(larkspool_test name)
  if(NOT LARKSPOOL_HAS_GTEST)
    return()
  endif()
  cmake_parse_arguments(arg "" "TIMEOUT" "LINK;LABELS;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE larkspool_options ${arg_LINK} GTest::gtest GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300) # many times what any takes, for a crowded machine
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}")
  if(arg_ENVIRONMENT)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${arg_ENVIRONMENT}")
  endif()
endfunction()

# The tests: tests/ mirrors tslbl/ and tool/, file for file.
find_package(GTest REQUIRED)

file(GLOB_RECURSE tslbl_test_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*.cpp)
if(TSLBL_THREADED_TESTS_ONLY)
  foreach(source IN LISTS tslbl_test_sources)
    file(STRINGS ${source} threaded REGEX "^(TYPED_)?TEST.*Threads")
    if(NOT threaded)
      list(REMOVE_ITEM tslbl_test_sources ${source})
    endif()
  endforeach()
endif()
set(tool_test_sources ${tslbl_test_sources})
list(REMOVE_ITEM tslbl_test_sources ${PROJECT_SOURCE_DIR}/tests/main.cpp)
list(FILTER tslbl_test_sources EXCLUDE REGEX "/tests/tool/")
list(FILTER tool_test_sources INCLUDE REGEX "/tests/tool/")

# A test program from the sources given. ctest knows its suites, with `prefix` before their names.
function(tslbl_add_tests name prefix)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE TSLBL_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  target_link_libraries(${name} PRIVATE tslbl_flags GTest::gtest GTest::gmock)
  # Tests are compiled far more often than run: the quickest way to a program that is checked.
  target_compile_options(${name} PRIVATE "$<$<CONFIG:Release,RelWithDebInfo>:-O0>"
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
  target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <algorithm> <cmath> <fstream> <functional> <map> <string>
                                            <sstream> <vector>)

  set(suites ${PROJECT_BINARY_DIR}/${name}_suites.cmake)
  if(NOT EXISTS ${suites})
    file(WRITE ${suites} "add_test(${name}_is_not_built ${name}_is_not_built)\n")
  endif()
  add_custom_command(TARGET ${name} POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${name}> -DPREFIX=${prefix} -DOUTPUT=${suites}
            -P ${PROJECT_SOURCE_DIR}/cmake/TestSuites.cmake)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY TEST_INCLUDE_FILES ${suites})
endfunction()

tslbl_add_tests(tslbl_tests "" ${tslbl_test_sources} tests/main.cpp)
target_link_libraries(tslbl_tests PRIVATE tslbl_objects TBB::tbb Boost::headers Eigen3::Eigen PkgConfig::log4cxx)

if(TSLBL_BUILD_TOOL AND tool_test_sources)
  tslbl_add_tests(tslbl_tool_tests tool/ ${tool_test_sources})
  target_compile_definitions(tslbl_tool_tests PRIVATE TSLBL_TOOL="$<TARGET_FILE:tslbl_tool>")
  add_dependencies(tslbl_tool_tests tslbl_tool)
  target_link_libraries(tslbl_tool_tests PRIVATE tslbl_tool_parts tslbl Pwiz::pwiz GTest::gtest_main)
  # Calls of the system that tests let fail, see tests/tool/FailingCall.h.
  target_link_options(tslbl_tool_tests PRIVATE LINKER:--wrap=fsync,--wrap=fclose,--wrap=rename)
endif()

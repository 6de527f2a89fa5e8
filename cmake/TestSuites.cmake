# Run once a test program is built: makes each of its suites a test of ctest. One process a
# suite, since with one a test most of the time went into starting them.
#   cmake -DPROGRAM=... -DPREFIX=... -DOUTPUT=... -P TestSuites.cmake
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n[A-Za-z0-9_/]+[.]" suites "\n${listing}")
if(NOT suites)
  message(FATAL_ERROR "${PROGRAM} holds no tests")
endif()
set(tests "")
foreach(suite IN LISTS suites)
  string(STRIP "${suite}" suite)
  string(REGEX REPLACE "[.]$" "" name "${PREFIX}${suite}")
  string(APPEND tests "add_test(\"${name}\" \"${PROGRAM}\" \"--gtest_filter=${suite}*\")\n"
                      "set_tests_properties(\"${name}\" PROPERTIES TIMEOUT 600)\n")
endforeach()
file(WRITE ${OUTPUT} "${tests}")

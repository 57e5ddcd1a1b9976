# Runs "tesvorutil dump --json" on a sample and compares the output with the
# expected file. Refresh the expectation with: cp ACTUAL EXPECTED.
execute_process(COMMAND ${WINE_RUN} --build-dir ${BUILD_DIR} ${TOOL} dump ${SAMPLE} --json
                OUTPUT_FILE ${ACTUAL} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "tesvorutil dump exited with ${status}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files --ignore-eol ${ACTUAL} ${EXPECTED}
                RESULT_VARIABLE different)
if(different)
  file(READ ${ACTUAL} text)
  message(FATAL_ERROR "dump differs from ${EXPECTED}:\n${text}")
endif()

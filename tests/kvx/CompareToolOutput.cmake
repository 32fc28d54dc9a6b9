# Runs the KVX dump tool on INPUT and compares its output with GOLDEN byte for
# byte.
execute_process(COMMAND ${TOOL} --lang ${LANG_FILE} ${INPUT}
  OUTPUT_FILE ${OUTPUT}
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "dump tool ended with ${status}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${GOLDEN}
  RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "${OUTPUT} differs from ${GOLDEN}")
endif()

# Runs the KVX dump tool on INPUT, a file it cannot read, and checks that it
# ends with status 1, names the failure on stderr and still prints the record.
execute_process(COMMAND ${TOOL} --lang ${LANG_FILE} ${INPUT}
  OUTPUT_VARIABLE out
  ERROR_VARIABLE err
  RESULT_VARIABLE status)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "dump tool ended with '${status}', not 1")
endif()
if(NOT err MATCHES "^Run-time error '62': Input past end of file \\(.*golden-en\\.lng\\)")
  message(FATAL_ERROR "unexpected failure text: ${err}")
endif()
if(NOT out MATCHES "^\\[raw header\\]\n.*\\[condensed report\\]")
  message(FATAL_ERROR "no record printed: ${out}")
endif()

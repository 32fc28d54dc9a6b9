# Runs a dump tool on INPUT under the locale LOCALE (the process takes it at
# start, as the program does) and compares its output with GOLDEN byte for
# byte. LANG_FILE, when given, goes to the tool's --lang.
set(args)
if(LANG_FILE)
  list(APPEND args --lang ${LANG_FILE})
endif()
# Run beside the sample, which the dump names as it was given.
get_filename_component(folder ${INPUT} DIRECTORY)
get_filename_component(name ${INPUT} NAME)
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=${LOCALE} LANG=${LOCALE}
    ${TOOL} ${args} ${name}
  WORKING_DIRECTORY ${folder}
  OUTPUT_FILE ${OUTPUT}
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "dump tool ended with ${status} under ${LOCALE}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${GOLDEN}
  RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "${OUTPUT} (${LOCALE}) differs from ${GOLDEN}")
endif()

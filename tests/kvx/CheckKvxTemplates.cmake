# The committed workbook templates are what the generator makes from the
# language files: run it into OUT and compare each file byte for byte.
# -DTOOL=<quenby-kvx-templates> -DLANG_DIR=<lang> -DTEMPLATES=<templates> -DOUT=<folder>
file(REMOVE_RECURSE ${OUT})
execute_process(COMMAND ${TOOL} ${LANG_DIR} ${OUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the template generator failed: ${status}")
endif()
foreach(name TMP2.xlsx TMP2-en.xlsx TMP2-fr.xlsx TMP2-polish.xlsx)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT}/${name} ${TEMPLATES}/${name}
    RESULT_VARIABLE differs)
  if(NOT differs EQUAL 0)
    message(FATAL_ERROR "templates/${name} is not what the generator makes; run "
                        "quenby-kvx-templates lang templates")
  endif()
endforeach()

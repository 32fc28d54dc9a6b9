# The committed sample files are what their generator makes: run it into OUT
# and compare each file it writes (PATTERN, such as *.zbl) with samples/ byte
# for byte.
# -DTOOL=<generator> -DSAMPLES=<samples> -DOUT=<folder> -DPATTERN=<glob>
file(REMOVE_RECURSE ${OUT})
file(MAKE_DIRECTORY ${OUT})
execute_process(COMMAND ${TOOL} ${OUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the sample generator failed: ${status}")
endif()
file(GLOB made RELATIVE ${OUT} ${OUT}/${PATTERN})
list(LENGTH made count)
if(count EQUAL 0)
  message(FATAL_ERROR "the sample generator wrote no file")
endif()
foreach(name ${made})
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT}/${name} ${SAMPLES}/${name}
    RESULT_VARIABLE differs)
  if(NOT differs EQUAL 0)
    get_filename_component(tool ${TOOL} NAME)
    message(FATAL_ERROR "samples/${name} is not what the generator makes; run ${tool} samples")
  endif()
endforeach()

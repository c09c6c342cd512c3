# Writes OUTPUT, an archive of the classes of the jar ENGINE that a job composition loads.
#
# The archive only makes the start faster, so it is not an error if the virtual machine cannot make
# one. The virtual machine crashes on a part of an archive, so the archive gets its name only when it is
# complete.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE log ERROR_VARIABLE log)
  if(NOT result EQUAL 0)
    file(REMOVE ${OUTPUT}.new)
    message(STATUS "No class archive for ${ENGINE}:\n${log}")
    set(failed TRUE PARENT_SCOPE)
  endif()
endfunction()

file(REMOVE ${OUTPUT})
file(MAKE_DIRECTORY ${WORK})
set(failed FALSE)
run(${JAVAC} -classpath ${ENGINE} -d ${WORK} ${SOURCE})
if(NOT failed)
  run(${JAVA} -XX:+UseSerialGC -Xshare:auto -XX:DumpLoadedClassList=${WORK}/classes
    -classpath ${ENGINE}:${WORK} TouchClasses)
endif()
if(NOT failed)
  # The archive is valid only for the class path of the engine. The one class outside it is skipped.
  run(${JAVA} -XX:+UseSerialGC -Xshare:dump -XX:SharedClassListFile=${WORK}/classes
    -XX:SharedArchiveFile=${OUTPUT}.new -classpath ${ENGINE})
endif()
if(NOT failed)
  file(RENAME ${OUTPUT}.new ${OUTPUT})
endif()

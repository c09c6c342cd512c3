# Compiles SOURCES against the jars in LIBRARIES into FOLDER/hvcluster.jar, and copies the jars beside it.
# The build is reproducible: entries have a fixed date and order.
set(classes ${WORK}/classes)
file(REMOVE_RECURSE ${WORK} ${FOLDER})
file(MAKE_DIRECTORY ${classes} ${FOLDER})
file(GLOB libraries ${LIBRARIES}/*.jar)
file(COPY ${libraries} DESTINATION ${FOLDER})

# Scala's classes have annotations whose classes are not there, which the compiler would report.
list(JOIN libraries ":" class_path)
file(GLOB_RECURSE sources ${SOURCES}/*.java)
execute_process(
  COMMAND ${JAVAC} --release 17 -encoding UTF-8 -g -Xlint:all,-classfile,-path -Werror
    -classpath ${class_path} -d ${classes} ${sources}
  COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE entries LIST_DIRECTORIES false RELATIVE ${classes} ${classes}/*)
list(SORT entries COMPARE STRING)
string(REPLACE ";" "\n" entries "${entries}")
file(WRITE ${WORK}/entries "${entries}\n")
execute_process(
  COMMAND ${JAR} --create --date 2000-01-01T00:00:00Z --file ${WORK}/hvcluster.jar @${WORK}/entries
  WORKING_DIRECTORY ${classes} COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${WORK}/hvcluster.jar ${FOLDER}/hvcluster.jar)

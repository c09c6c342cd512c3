# Compiles SOURCES and packs them, with the classes of LIBRARY, into the jar OUTPUT.
#
# The build is reproducible: entries have a fixed date and order.
set(classes ${WORK}/classes)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${classes})

# Concatenate texts with plain calls. Dynamic calls would be linked again in each process, which
# takes longer than a small job, and no class archive stores them.
file(GLOB_RECURSE sources ${SOURCES}/*.java)
execute_process(
  COMMAND ${JAVAC} --release 17 -encoding UTF-8 -g -Xlint:all -Werror -XDstringConcat=inline
    -classpath ${LIBRARY} -d ${classes} ${sources}
  COMMAND_ERROR_IS_FATAL ANY)

execute_process(COMMAND ${JAR} --extract --file ${LIBRARY}
  WORKING_DIRECTORY ${classes} COMMAND_ERROR_IS_FATAL ANY)
# Keep the library's notice under its own name. Its manifest and service entry belong to its own
# jar.
file(RENAME ${classes}/META-INF/NOTICE ${WORK}/NOTICE)
file(REMOVE_RECURSE ${classes}/META-INF)
file(REMOVE ${classes}/module-info.class)
file(MAKE_DIRECTORY ${classes}/META-INF)
file(RENAME ${WORK}/NOTICE ${classes}/META-INF/NOTICE-jackson-core)
# One licence, Apache-2.0, covers both.
configure_file(${LICENSE} ${classes}/META-INF/LICENSE COPYONLY)

file(GLOB_RECURSE entries LIST_DIRECTORIES false RELATIVE ${classes} ${classes}/*)
list(SORT entries COMPARE STRING)
string(REPLACE ";" "\n" entries "${entries}")
file(WRITE ${WORK}/entries "${entries}\n")
get_filename_component(folder ${OUTPUT} DIRECTORY)
file(MAKE_DIRECTORY ${folder})
execute_process(
  COMMAND ${JAR} --create --date 2000-01-01T00:00:00Z --file ${WORK}/hvengine.jar @${WORK}/entries
  WORKING_DIRECTORY ${classes} COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${WORK}/hvengine.jar ${OUTPUT})

# Links OBJECTS into OUTPUT with exactly the libraries that MODULE names as needed: the floor under mapping the
# module stays right when the module comes to need another library.
execute_process(COMMAND ${READELF} -dW ${MODULE} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*\\[[^]\n]+\\]" lines "${dynamic}")
set(libraries)
foreach(line IN LISTS lines)
    string(REGEX REPLACE ".*\\[(.+)\\]" "-l:\\1" library "${line}")
    list(APPEND libraries ${library})
endforeach()
get_filename_component(folder ${MODULE} DIRECTORY)
execute_process(
    COMMAND ${COMPILER} -shared -nodefaultlibs -Wl,--no-as-needed -Wl,-z,nodelete "-Wl,-rpath,$ORIGIN"
            -o ${OUTPUT} ${OBJECTS} -L${folder} ${libraries}
    COMMAND_ERROR_IS_FATAL ANY)

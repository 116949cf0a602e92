# Checks that only one source of the libraries has objects that are constructed or destroyed at load or unload: every other
# object file is without a section of initializers.
#   cmake -DREADELF= -DOBJECTS=file -P CheckInitializers.cmake
# OBJECTS lists the object files, separated by semicolons.

file(READ "${OBJECTS}" objects)
set(initializing "")
set(count 0)
foreach(object IN LISTS objects)
    execute_process(COMMAND "${READELF}" -S -W "${object}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
    if(sections MATCHES " \\.(preinit_array|init_array|fini_array|ctors|dtors)[. ]")
        list(APPEND initializing "${object}")
    endif()
    math(EXPR count "${count} + 1")
endforeach()
if(NOT initializing MATCHES "^[^;]*/frame/startup/LoadTimeObjects\\.cpp\\.[a-z]+$")
    list(JOIN initializing "\n  " initializing)
    message(FATAL_ERROR "only frame/startup/LoadTimeObjects.cpp may have load-time objects, but these have:\n  ${initializing}")
endif()
message("${count} object files were checked")

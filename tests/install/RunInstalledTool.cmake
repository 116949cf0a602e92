# Runs the installed tool without LD_LIBRARY_PATH: in its prefix, and in a copy of it elsewhere.
#   cmake -DPREFIX= -DCOPY= -DTOOL= -P RunInstalledTool.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(REMOVE_RECURSE "${COPY}")
file(COPY "${PREFIX}/" DESTINATION "${COPY}")
foreach(prefix IN ITEMS "${PREFIX}" "${COPY}")
    run("${CMAKE_COMMAND}" -E env --unset=LD_LIBRARY_PATH "${prefix}/${TOOL}" --version)
    if(NOT RUN_OUTPUT MATCHES "^roamscan [0-9.]+\n$")
        message(FATAL_ERROR "${prefix}/${TOOL} does not report its version")
    endif()
endforeach()

# run(COMMAND ARGUMENTS...): runs a command, shows its output, and stops the test if it fails. The output is left in
# RUN_OUTPUT.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    message("${output}")
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "failed with ${result}: ${command}")
    endif()
    set(RUN_OUTPUT "${output}" PARENT_SCOPE)
endfunction()

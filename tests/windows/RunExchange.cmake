# Each of two test programs, for two systems, writes files that the other one reads and compares with its own.
#   cmake -DHERE=emulator;program -DTHERE=program -DWORK_DIR= -P RunExchange.cmake

if(NOT THERE OR NOT EXISTS "${THERE}")
    message("skipped: ROAMSCAN_NATIVE_TESTS names no program of tests for this system")
    return()
endif()

# exchange(program...): runs its test of the exchange in the given role.
function(exchange role folder)
    execute_process(COMMAND "${CMAKE_COMMAND}" -E env "ROAMSCAN_EXCHANGE_${role}=${folder}" ${ARGN}
                            --gtest_filter=PlatformExchange.* RESULT_VARIABLE status OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT status EQUAL 0 OR NOT output MATCHES "\\[  PASSED  \\] [1-9]")
        message(FATAL_ERROR "${role} ${ARGN}:\n${output}")
    endif()
    message("${role}: ${ARGN}")
endfunction()

foreach(folder IN ITEMS here there)
    file(REMOVE_RECURSE "${WORK_DIR}/${folder}")
    file(MAKE_DIRECTORY "${WORK_DIR}/${folder}")
endforeach()
exchange(WRITE "${WORK_DIR}/here" ${HERE})
exchange(READ "${WORK_DIR}/here" ${THERE})
exchange(WRITE "${WORK_DIR}/there" ${THERE})
exchange(READ "${WORK_DIR}/there" ${HERE})

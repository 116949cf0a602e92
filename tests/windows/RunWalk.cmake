# Simulates the walk of `./run demo` and places its points. What is printed is the same, digit for digit, as on other systems.
#   cmake -DTOOL=[emulator;]program -DWORK_DIR= -P RunWalk.cmake

cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
execute_process(COMMAND ${TOOL} simulate walk --seconds 60 WORKING_DIRECTORY "${WORK_DIR}" OUTPUT_VARIABLE out
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(
    COMMAND ${TOOL} place --trajectory walk/walk.trajectory --sensors walk/walk.sensors --rangefinder scanner1 --from 1 --to 0
            --building walk/building.json --cloud cloud.ply --picture plan.png
    WORKING_DIRECTORY "${WORK_DIR}"
    OUTPUT_VARIABLE out COMMAND_ERROR_IS_FATAL ANY)
string(CONCAT expected "1201851 points in the scan\n" #
              "1193901 points were placed\n" #
              "0 points had no time\n" #
              "7950 points lay outside the trajectory in time\n"
              "0 points lay in gaps of the trajectory longer than 0.100000 s (ten usual steps) and were left out\n"
              "0 points had no measured position\n" #
              "placed 1193901 of 1201851 points, rms 0.0023 m\n")
if(NOT out STREQUAL expected)
    message(FATAL_ERROR "found:\n${out}\nexpected:\n${expected}")
endif()
message("passed")

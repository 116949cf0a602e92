# Runs ./run in a small project whose path has a blank, with this project's presets.
#   cmake -DSOURCE_DIR= -DWORK_DIR= -P RunInPathWithBlank.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

set(project "${WORK_DIR}/path with blank")
file(REMOVE_RECURSE "${project}")
file(COPY "${CMAKE_CURRENT_LIST_DIR}/project/" "${SOURCE_DIR}/run" "${SOURCE_DIR}/CMakePresets.json" DESTINATION "${project}")
file(COPY "${SOURCE_DIR}/tests/ThreadSanitizer.supp" DESTINATION "${project}/tests")
set(ENV{ROAMSCAN_NO_INSTALL} 1)
run("${project}/run" test --all)
run("${project}/run" install "${project}/installed here")
run("${project}/installed here/bin/nothing")

# Wrong arguments are refused before anything is done.
execute_process(COMMAND "${project}/run" package nonsense RESULT_VARIABLE status ERROR_VARIABLE message)
if(NOT status EQUAL 2 OR NOT message MATCHES "unknown option 'nonsense' for package")
    message(FATAL_ERROR "run package nonsense: status ${status}, ${message}")
endif()

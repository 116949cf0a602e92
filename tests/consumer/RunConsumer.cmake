# Configures, builds and runs the consumers against an installation of the library, or with its source as a subdirectory.
#   cmake -DCONSUMER_DIR= -DWORK_DIR= -DGENERATOR= -DCXX= (-DPREFIX= | -DROAMSCAN_SOURCE=) -P RunConsumer.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
set(options "-DCMAKE_CXX_COMPILER=${CXX}")
if(ROAMSCAN_SOURCE)
    list(APPEND options "-DROAMSCAN_SOURCE=${ROAMSCAN_SOURCE}")
else()
    list(APPEND options "-DCMAKE_PREFIX_PATH=${PREFIX}")
endif()
run("${CMAKE_COMMAND}" -S "${CONSUMER_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}" ${options})
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
foreach(program IN ITEMS consumer json_consumer imagery_consumer)
    run("${CMAKE_COMMAND}" -E chdir "${WORK_DIR}" "${WORK_DIR}/build/${program}")
endforeach()

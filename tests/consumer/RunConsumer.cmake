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

# libraries_of(program result): the paths of the shared libraries that a program loads at its start.
function(libraries_of program result)
    run(ldd "${WORK_DIR}/build/${program}")
    string(REGEX MATCHALL "[^\n]+" lines "${RUN_OUTPUT}")
    set(${result} "${lines}" PARENT_SCOPE)
endfunction()

# Only the component Imagery loads OpenCV and the libraries of its codecs.
foreach(program IN ITEMS consumer json_consumer)
    libraries_of(${program} libraries)
    list(LENGTH libraries count)
    if(count GREATER 15 OR NOT libraries MATCHES "libRoamscanDataStructures\\." OR libraries MATCHES "opencv|Imagery")
        message(FATAL_ERROR "${program} must load RoamscanDataStructures, at most 15 libraries, and no pictures")
    endif()
endforeach()
libraries_of(imagery_consumer libraries)
if(NOT libraries MATCHES "libRoamscanDataStructuresImagery\\." OR NOT libraries MATCHES "opencv_imgcodecs")
    message(FATAL_ERROR "imagery_consumer must load the library of the component Imagery")
endif()

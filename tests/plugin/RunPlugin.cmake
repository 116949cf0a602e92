# Builds the plug-in of the documentation's first steps as it stands, against the installed package, and runs it on a
# simulated recording.
#   cmake -DPROJECT= -DPREFIX= -DTOOL= -DWORK_DIR= -DGENERATOR= -DCXX= -P RunPlugin.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
file(COPY "${PROJECT}/" DESTINATION "${WORK_DIR}")
run("${PREFIX}/${TOOL}" simulate "${WORK_DIR}/walk" --seconds 2 --panorama 64)
run("${CMAKE_COMMAND}" -S "${WORK_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER=${CXX}"
    "-DCMAKE_PREFIX_PATH=${PREFIX}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${CMAKE_COMMAND}" -E chdir "${WORK_DIR}" build/plugin)
if(NOT RUN_OUTPUT MATCHES "placed [1-9][0-9]* points")
    message(FATAL_ERROR "the plug-in placed no points")
endif()

# A source that is compiled for AVX without the package's definition is refused by every public header with Eigen's
# types in it, by a message that names the definition; with the definition it compiles.
#   cmake -DCXX= -DSOURCE_DIR= -DEIGEN_DIR= -DWORK_DIR= -DOTHER_ALIGNMENT= -P CheckEigenAlignment.cmake
# OTHER_ALIGNMENT is the compiler option that changes Eigen's alignment.

set(definition "EIGEN_MAX_STATIC_ALIGN_BYTES=16")

# compile(code options...): compiles a source; its messages are left in MESSAGES, its status in STATUS.
function(compile code)
    file(WRITE "${WORK_DIR}/consumer.cpp" "${code}")
    execute_process(
        COMMAND "${CXX}" -std=c++20 -fsyntax-only "-I${SOURCE_DIR}" -isystem "${EIGEN_DIR}" ${ARGN} "${WORK_DIR}/consumer.cpp"
        RESULT_VARIABLE status
        OUTPUT_QUIET
        ERROR_VARIABLE messages)
    set(STATUS "${status}" PARENT_SCOPE)
    set(MESSAGES "${messages}" PARENT_SCOPE)
endfunction()

function(expect_refused code)
    compile("${code}" ${ARGN})
    if(STATUS EQUAL 0 OR NOT MESSAGES MATCHES "compile with -D${definition}")
        message(SEND_ERROR "expected to be refused with ${definition} named (${ARGN}):\n${code}\n${MESSAGES}")
    endif()
endfunction()

function(expect_accepted code)
    compile("${code}" ${ARGN})
    if(NOT STATUS EQUAL 0)
        message(SEND_ERROR "expected to compile (${ARGN}):\n${code}\n${MESSAGES}")
    endif()
endfunction()

file(
    GLOB_RECURSE headers
    RELATIVE "${SOURCE_DIR}"
    "${SOURCE_DIR}/roamscan/*.h")
list(FILTER headers EXCLUDE REGEX "/(detail|startup)/|EigenAlignment\\.h$")
set(checked 0)
foreach(header IN LISTS headers)
    file(STRINGS "${SOURCE_DIR}/${header}" eigen REGEX "^#include <Eigen/")
    if(eigen)
        expect_refused("#include <${header}>\n" -E "${OTHER_ALIGNMENT}")
        math(EXPR checked "${checked} + 1")
    endif()
endforeach()
if(checked LESS 3)
    message(SEND_ERROR "only ${checked} public headers include Eigen; TrafoT.h, TrajectoryNode.h and PlaneTarget.h do")
endif()

set(consumer
    "#include <roamscan/trajectorydata/TrajectoryData.h>
static_assert(sizeof(oV::Roamscan::TrafoT<double>) == 80 && alignof(oV::Roamscan::TrafoT<double>) == 16);
static_assert(sizeof(oV::Roamscan::TrajectoryNode) == 256);
")
set(eigenFirst "#include <Eigen/Geometry>\n${consumer}")
foreach(code IN ITEMS "${consumer}" "${eigenFirst}")
    expect_refused("${code}" "${OTHER_ALIGNMENT}")
    expect_refused("${code}" -DEIGEN_MAX_STATIC_ALIGN_BYTES=0)
    expect_accepted("${code}" "-D${definition}")
endforeach()
if(NOT OTHER_ALIGNMENT MATCHES "EIGEN_")
    expect_accepted("${eigenFirst}" "${OTHER_ALIGNMENT}" "-D${definition}")
endif()

# Runs the tool with names in several scripts and with pipes, as a user does.
#   cmake -DTOOL=[emulator;]program -DWORK_DIR= -P RunTool.cmake

cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

# tool(status arguments...): runs it in the folder, with the file `input`, if that is set, as standard input; sets out and err.
function(tool status)
    set(redirected "")
    if(input)
        set(redirected INPUT_FILE "${input}")
    endif()
    execute_process(COMMAND ${TOOL} ${ARGN} WORKING_DIRECTORY "${WORK_DIR}" ${redirected} RESULT_VARIABLE found
                    OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT found EQUAL status)
        message(FATAL_ERROR "${ARGN}: status ${found}\n${out}\n${err}")
    endif()
    set(out "${out}" PARENT_SCOPE)
    set(err "${err}" PARENT_SCOPE)
endfunction()

# expect(text expected)
function(expect text expected)
    if(NOT text STREQUAL expected)
        message(FATAL_ERROR "found:\n${text}\nexpected:\n${expected}")
    endif()
endfunction()

# expect_same(file file): byte by byte
function(expect_same first second)
    file(SHA256 "${WORK_DIR}/${first}" firstSum)
    file(SHA256 "${WORK_DIR}/${second}" secondSum)
    if(NOT firstSum STREQUAL secondSum)
        message(FATAL_ERROR "${first} and ${second} differ")
    endif()
endfunction()

# An argument in several scripts is the name of a file, and is printed as such.
set(poses "прогулка Größe 散歩.txt")
file(WRITE "${WORK_DIR}/${poses}" "10 1 2 3 0 0 0 1\n11 2 2 3 0 0 0 1\n")
tool(0 import --format tum "${poses}" "散歩.trajectory")
expect("${out}" "2 poses imported\n")
if(NOT EXISTS "${WORK_DIR}/散歩.trajectory")
    message(FATAL_ERROR "the trajectory does not have its name")
endif()
tool(0 info "散歩.trajectory")
if(NOT out MATCHES "^散歩\\.trajectory: trajectory stream\n  nodes: 2\n")
    message(FATAL_ERROR "${out}")
endif()
tool(1 info "全景.png")
expect("${err}" "roamscan: 全景.png: there is no such file; check the name\n")

# Pipes carry bytes as they are: text without CR, and binary data, in which LF and the mark of an end of file occur.
tool(0 export --format tum "散歩.trajectory" "again.txt")
tool(0 export --format tum "散歩.trajectory" -)
expect("${out}" "# time tx ty tz qx qy qz qw\n10 1 2 3 0 0 0 1\n11 2 2 3 0 0 0 1\n")
file(READ "${WORK_DIR}/again.txt" text)
expect("${text}" "${out}")
tool(0 simulate walk --seconds 3)
set(cloud place --from 1 --to 0 --sensors walk/walk.sensors --rangefinder scanner1)
tool(0 ${cloud} --trajectory walk/walk.trajectory --cloud file.ply)
set(input "${WORK_DIR}/walk/walk.trajectory")
execute_process(COMMAND ${TOOL} ${cloud} --trajectory - --cloud - --cloud-format ply WORKING_DIRECTORY "${WORK_DIR}"
                INPUT_FILE "${input}" OUTPUT_FILE "${WORK_DIR}/pipe.ply" ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
expect_same(file.ply pipe.ply)
set(input "")

# A path of more than 260 characters.
string(REPEAT "a long name of a folder/" 14 long)
file(MAKE_DIRECTORY "${WORK_DIR}/${long}")
tool(0 import --format tum "${poses}" "${long}walk.trajectory")
expect_same("${long}walk.trajectory" "散歩.trajectory")
message("passed")

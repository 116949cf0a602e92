# Compiles and runs every C++ block of the README as it stands, as a plug-in's project: against the installed package, with
# the CMake block of the README, beside the recording that `roamscan simulate walk` writes.
#   cmake -DREADME= -DPREFIX= -DTOOL= -DWORK_DIR= -DGENERATOR= -DCXX= -P RunReadme.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

# take_block(language text block): moves the first block of the language out of `text`; empty if there is none.
function(take_block language text block)
    set(${block} "" PARENT_SCOPE)
    set(fence "\n```${language}\n")
    string(FIND "${${text}}" "${fence}" start)
    if(start EQUAL -1)
        return()
    endif()
    string(LENGTH "${fence}" fenceLength)
    math(EXPR start "${start} + ${fenceLength}")
    string(SUBSTRING "${${text}}" ${start} -1 rest)
    string(FIND "${rest}" "\n```" end)
    string(SUBSTRING "${rest}" 0 ${end} body)
    string(SUBSTRING "${rest}" ${end} -1 rest)
    set(${block} "${body}\n" PARENT_SCOPE)
    set(${text} "${rest}" PARENT_SCOPE)
endfunction()

file(READ "${README}" cmakeText)
set(cppText "${cmakeText}")
take_block(cmake cmakeText project)
take_block(cpp cppText program)
if(NOT project OR NOT program)
    message(FATAL_ERROR "${README} has no C++ block, or none for CMake")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
run("${CMAKE_COMMAND}" -E chdir "${WORK_DIR}" "${PREFIX}/${TOOL}" simulate walk --seconds 5 --panorama 64)
set(count 0)
while(program)
    math(EXPR count "${count} + 1")
    set(folder "${WORK_DIR}/block ${count}")
    file(WRITE "${folder}/main.cpp" "${program}")
    file(WRITE "${folder}/CMakeLists.txt" "cmake_minimum_required(VERSION 3.25)\nproject(Plugin LANGUAGES CXX)\n"
                                          "add_executable(plugin main.cpp)\n${project}")
    run("${CMAKE_COMMAND}" -S "${folder}" -B "${folder}/build" -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER=${CXX}"
        "-DCMAKE_PREFIX_PATH=${PREFIX}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
    run("${CMAKE_COMMAND}" --build "${folder}/build")
    run("${CMAKE_COMMAND}" -E chdir "${WORK_DIR}" "${folder}/build/plugin")
    take_block(cpp cppText program)
endwhile()
message("${count} C++ blocks compiled and ran")

# Checks that README.md and CONTRIBUTING.md name only files and folders that exist, and that the table in CONTRIBUTING.md
# has one row for each folder of the library.
#   cmake -DSOURCE_DIR= -P CheckDocuments.cmake

cmake_minimum_required(VERSION 3.25)

set(missing "")

file(GLOB_RECURSE sources RELATIVE "${SOURCE_DIR}/roamscan" "${SOURCE_DIR}/roamscan/*.h" "${SOURCE_DIR}/roamscan/*.cpp")
set(folders "")
foreach(source IN LISTS sources)
    cmake_path(GET source PARENT_PATH folder)
    string(REGEX REPLACE "/detail$" "" folder "${folder}")
    list(APPEND folders "${folder}")
endforeach()
list(REMOVE_DUPLICATES folders)

file(STRINGS "${SOURCE_DIR}/CONTRIBUTING.md" lines REGEX "^\\| `[a-z/]+` \\|")
set(rows "")
foreach(line IN LISTS lines)
    string(REGEX REPLACE "^\\| `([a-z/]+)` .*" "\\1" row "${line}")
    if(row IN_LIST rows)
        list(APPEND missing "CONTRIBUTING.md has two rows for `${row}`")
    endif()
    list(APPEND rows "${row}")
    if(NOT row IN_LIST folders)
        list(APPEND missing "CONTRIBUTING.md has a row for `${row}`, which is no folder of roamscan/ with sources")
    endif()
endforeach()
foreach(folder IN LISTS folders)
    if(NOT folder IN_LIST rows)
        list(APPEND missing "CONTRIBUTING.md has no row for `${folder}`, a folder of roamscan/")
    endif()
endforeach()

# Links to files, and paths in backticks. "Name" stands for any name; the folders of the build and of findings come later.
foreach(document IN ITEMS README.md CONTRIBUTING.md)
    file(READ "${SOURCE_DIR}/${document}" text)
    string(REPLACE "](" "`(" text "${text}") # A square bracket would join the elements of a list.
    string(REGEX MATCHALL "`\\([A-Za-z0-9_./-]+\\)|`(\\.ci|bench|cmake|docs|examples|fuzz|roamscan|tests|tools)/[^` ]*`" names
                 "${text}")
    foreach(name IN LISTS names)
        string(REGEX REPLACE "[()`]" "" path "${name}")
        string(REPLACE "Name" "*" pattern "${path}")
        string(REGEX REPLACE "/$" "" pattern "${pattern}")
        file(GLOB found "${SOURCE_DIR}/${pattern}")
        if(NOT found AND NOT path STREQUAL "fuzz/findings/")
            list(APPEND missing "${document} names ${path}, which does not exist")
        endif()
    endforeach()
endforeach()

if(missing)
    list(JOIN missing "\n  " missing)
    message(FATAL_ERROR "the documents and the tree differ:\n  ${missing}")
endif()

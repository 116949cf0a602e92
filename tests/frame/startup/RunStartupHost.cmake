cmake_minimum_required(VERSION 3.25)

# Runs a host that loads the library, and checks which objects of the library are constructed and released, in which order,
# and when its module is attached.
#   cmake -DNM= -DLIBRARY= -DPROGRAM=program;arguments -DLOADS= -P RunStartupHost.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake")

# The objects with exit actions in the order of construction: the load-time objects, and the class records of base classes
# before those that need them. The entry point is called by the constructor and the destructor of the last one.
set(expected
    "Bv_1_1::Module::library()::module"
    "Bv_1_1::BaseNode::Class()::record"
    "oV::Roamscan::RoamscanOptions::Class()::record"
    "oV::Roamscan::RoamscanOptions::instance"
    "oV::Roamscan::RoamscanOptions::lock"
    "oV::Roamscan::detail::optionsListLock"
    "oV::Observer::Class()::record"
    "oV::AttrContainer::Class()::record"
    "oV::Roamscan::RoamscanOptionsCont::Class()::record"
    "oV::Roamscan::RoamscanOptionsCont::attrDefs"
    "oV::Roamscan::RoamscanOptionsJsonMerger::m_seperator"
    "oV::Roamscan::startup::roamText"
    "oV::Roamscan::(anonymous namespace)::attachment")
set(lastObject "oV::Roamscan::(anonymous namespace)::attachment")

execute_process(COMMAND "${NM}" -C --defined-only "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[0-9a-f]+ [bBdDrRuV] [^\n]+" symbols "${symbols}") # the data
list(JOIN symbols "\n" symbols)

# name_of(offset result): the name of the object at an offset in the library.
function(name_of offset result)
    if(NOT symbols MATCHES "(^|\n)0*${offset} [bBdDrRuV] ([^\n]+)")
        message(FATAL_ERROR "the library has no symbol for the object at ${offset}")
    endif()
    set(${result} "${CMAKE_MATCH_2}" PARENT_SCOPE)
endfunction()

# expect_equal(what actual expected)
function(expect_equal what actual wanted)
    if(NOT actual STREQUAL wanted)
        list(JOIN actual "\n  " actual)
        list(JOIN wanted "\n  " wanted)
        message(FATAL_ERROR "${what}:\n  ${actual}\nexpected:\n  ${wanted}")
    endif()
endfunction()

run(${PROGRAM})
string(REGEX REPLACE "\n$" "" lines "${RUN_OUTPUT}")
string(REPLACE "\n" ";" lines "${lines}")
set(loads 0)
set(constructed "")
set(releasing "")
set(isLoaded FALSE)
foreach(line IN LISTS lines "end")
    if(line STREQUAL "loaded")
        expect_equal("constructed at load" "${constructed}" "${expected}")
        set(isLoaded TRUE)
        math(EXPR loads "${loads} + 1")
    elseif(line STREQUAL "unloaded" OR (line STREQUAL "end" AND constructed))
        list(REVERSE releasing)
        expect_equal("released, last one first" "${releasing}" "${constructed}")
        set(constructed "")
        set(releasing "")
        set(isLoaded FALSE)
    elseif(line MATCHES "^(constructed|releasing) ([0-9a-f]+) (attached|detached)$")
        set(event "${CMAKE_MATCH_1}")
        set(state "${CMAKE_MATCH_3}")
        name_of(${CMAKE_MATCH_2} object)
        list(APPEND ${event} "${object}")
        if(event STREQUAL "constructed")
            # An object that is constructed on first use.
            set(isLate ${isLoaded})
        elseif(object IN_LIST expected)
            set(isLate FALSE)
        else()
            set(isLate TRUE)
        endif()
        if(isLate OR object STREQUAL lastObject)
            expect_equal("the module when ${event} ${object}" "${state}" attached)
        else()
            expect_equal("the module when ${event} ${object}" "${state}" detached)
        endif()
    elseif(NOT line STREQUAL "end")
        message(FATAL_ERROR "unexpected output: ${line}")
    endif()
endforeach()
expect_equal("number of loads" "${loads}" "${LOADS}")

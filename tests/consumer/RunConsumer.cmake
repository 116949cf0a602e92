# Builds and runs the consumers in one of three ways: with the installed CMake package, with the installed pkg-config files,
# or with the sources as a subdirectory.
#   cmake -DKIND=package|pkg-config -DPREFIX= [-DSTATIC=ON] -DWORK_DIR= -DGENERATOR= -DCXX= -DNM= -P RunConsumer.cmake
#   cmake -DKIND=subdirectory -DROAMSCAN_SOURCE= [-DSTATIC=ON -DPREFIX=] -DWORK_DIR= -DGENERATOR= -DCXX= -DNM= -P ...
# As a subdirectory, a static library is then installed in PREFIX.

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Programs.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/output")
set(programDir "${WORK_DIR}/build")

# build(options...): configures and builds the project of this kind.
function(build)
    run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/${KIND}" -B "${programDir}" -G "${GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${CXX}" ${ARGN})
    run("${CMAKE_COMMAND}" --build "${programDir}")
endfunction()

# compile(package program sources-and-options...): with the flags of pkg-config.
function(compile package program)
    run("${CMAKE_CURRENT_LIST_DIR}/pkg-config/compile.sh" "${programDir}/${program}" ${package} ${ARGN})
endfunction()

if(KIND STREQUAL "package")
    build("-DCMAKE_PREFIX_PATH=${PREFIX}")
elseif(KIND STREQUAL "subdirectory")
    if(STATIC)
        # The default is a shared library.
        run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/${KIND}" -B "${WORK_DIR}/shared" -G "${GENERATOR}"
            "-DCMAKE_CXX_COMPILER=${CXX}" "-DROAMSCAN_SOURCE=${ROAMSCAN_SOURCE}" -DEXPECTED_TYPE=SHARED_LIBRARY)
        build("-DROAMSCAN_SOURCE=${ROAMSCAN_SOURCE}" -DBUILD_SHARED_LIBS=OFF -DEXPECTED_TYPE=STATIC_LIBRARY)
        file(REMOVE_RECURSE "${PREFIX}")
        run("${CMAKE_COMMAND}" --install "${programDir}/roamscan" --prefix "${PREFIX}")
    else()
        build("-DROAMSCAN_SOURCE=${ROAMSCAN_SOURCE}" -DEXPECTED_TYPE=SHARED_LIBRARY)
    endif()
else()
    file(MAKE_DIRECTORY "${programDir}")
    file(GLOB_RECURSE pkgConfigFile "${PREFIX}/*/RoamscanDataStructures.pc")
    cmake_path(GET pkgConfigFile PARENT_PATH pkgConfigDir)
    set(ENV{PKG_CONFIG_PATH} "${pkgConfigDir}")
    set(ENV{CXX} "${CXX}")
    if(STATIC)
        set(ENV{STATIC} --static)
        compile(RoamscanDataStructures StaticHost ${STATIC_HOST_OPTIONS} ${STATIC_HOST_SOURCES} -ldl)
    endif()
    foreach(component IN ITEMS "" Json Imagery)
        string(TOUPPER "CONSUMER_SOURCES_${component}" sources)
        string(REGEX REPLACE "_$" "" sources "${sources}")
        foreach(source IN LISTS ${sources})
            cmake_path(GET source STEM program)
            compile(RoamscanDataStructures${component} ${program} "${source}")
        endforeach()
    endforeach()
endif()

foreach(source IN LISTS CONSUMER_SOURCES CONSUMER_SOURCES_JSON CONSUMER_SOURCES_IMAGERY)
    cmake_path(GET source STEM program)
    run("${CMAKE_COMMAND}" -E chdir "${WORK_DIR}/output" "${programDir}/${program}")

    # Only the component Imagery loads OpenCV and the libraries of its codecs.
    run(ldd "${programDir}/${program}")
    string(REGEX MATCHALL "[^\n]+" libraries "${RUN_OUTPUT}")
    list(LENGTH libraries count)
    set(loadsPictures FALSE)
    if(libraries MATCHES "opencv_imgcodecs")
        set(loadsPictures TRUE)
    endif()
    if(source IN_LIST CONSUMER_SOURCES_IMAGERY)
        if(NOT loadsPictures)
            message(FATAL_ERROR "${program} must load OpenCV's codecs")
        endif()
    elseif(loadsPictures OR count GREATER 15)
        message(FATAL_ERROR "${program} loads ${count} libraries; allowed are at most 15, and none of OpenCV")
    endif()
    if(STATIC AND libraries MATCHES "libRoamscan")
        message(FATAL_ERROR "${program} must not load shared libraries of the project")
    elseif(NOT STATIC AND NOT libraries MATCHES "libRoamscanDataStructures\\.so")
        message(FATAL_ERROR "${program} must load the shared library RoamscanDataStructures")
    endif()

    # Each program has the load-time objects, whether or not it refers to one of them.
    if(STATIC)
        execute_process(COMMAND "${NM}" -C --defined-only "${programDir}/${program}" OUTPUT_VARIABLE symbols
                        COMMAND_ERROR_IS_FATAL ANY)
        if(NOT symbols MATCHES "anonymous namespace.::attachment\n")
            message(FATAL_ERROR "${program} was linked without the load-time objects of the library")
        endif()
    endif()
endforeach()

if(STATIC)
    run("${CMAKE_COMMAND}" "-DNM=${NM}" "-DLIBRARY=${programDir}/StaticHost" "-DLOADS=1" "-DPROGRAM=${programDir}/StaticHost" -P
        "${CMAKE_CURRENT_LIST_DIR}/../frame/startup/RunStartupHost.cmake")
endif()

# The programs of the consumers, by the component that they use: an example of each subsystem, and what examples do not
# show (exceptions that the library throws, its interface implemented by a plug-in).

set(consumerDir "${CMAKE_CURRENT_LIST_DIR}")
set(examplesDir "${consumerDir}/../../examples")
set(CONSUMER_SOURCES
    "${consumerDir}/main.cpp"
    "${examplesDir}/ConvertTimes.cpp" # time
    "${examplesDir}/BuildTrajectory.cpp" # trajectory
    "${examplesDir}/ReadTrajectoryData.cpp" # trajectorydata
    "${examplesDir}/RecordSensors.cpp" # sensors
    "${examplesDir}/PlaceScanPoint.cpp" # geometry
    "${examplesDir}/ObserveOption.cpp") # frame
set(CONSUMER_SOURCES_JSON "${examplesDir}/ReadOptions.cpp") # options
set(CONSUMER_SOURCES_IMAGERY "${consumerDir}/imagery.cpp" "${examplesDir}/StorePanorama.cpp") # imagery

# A program that shows when the load-time objects of a static library are constructed and released. It includes headers of
# the tests.
set(testsDir "${consumerDir}/..")
set(STATIC_HOST_SOURCES "${consumerDir}/StaticHost.cpp" "${testsDir}/frame/startup/StartupPlugin.cpp"
                        "${testsDir}/frame/startup/RecordedObjects.cpp")
set(STATIC_HOST_OPTIONS -iquote "${consumerDir}/../..")

# consumer_programs(target sources...): adds a program for each source and links the target.
function(consumer_programs target)
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM name)
        add_executable(${name} "${source}")
        target_link_libraries(${name} PRIVATE ${target})
    endforeach()
endfunction()

# consumer_static_host(target): adds the program for the static library.
function(consumer_static_host target)
    add_executable(StaticHost ${STATIC_HOST_SOURCES})
    target_compile_options(StaticHost PRIVATE ${STATIC_HOST_OPTIONS})
    target_link_libraries(StaticHost PRIVATE ${target} ${CMAKE_DL_LIBS})
endfunction()

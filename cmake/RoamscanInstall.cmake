# The installed package: the libraries, their public headers, and the files for find_package(RoamscanDataStructures) and
# for pkg-config. The component Imagery has install components of its own, so that it can be packaged apart.

include(CMakePackageConfigHelpers)
include(RoamscanPkgConfig)

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/RoamscanDataStructures")

# roamscan_install_library(target install-component)
function(roamscan_install_library target component)
    install(
        TARGETS ${target}
        EXPORT ${target}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component} NAMELINK_COMPONENT ${component}Development
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${component}
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component}Development)
    install(
        EXPORT ${target}Targets
        NAMESPACE RoamscanDataStructures::
        DESTINATION "${packageDir}"
        COMPONENT ${component}Development)
endfunction()

roamscan_install_library(RoamscanDataStructures Library)
roamscan_install_library(RoamscanJson Library)
if(ROAMSCAN_BUILD_IMAGERY)
    roamscan_install_library(RoamscanImagery Imagery)
endif()

set(imageryHeader imagery/LargeImageSerialization.h)
install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/roamscan"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    COMPONENT LibraryDevelopment
    FILES_MATCHING
    PATTERN "*.h"
    PATTERN "detail" EXCLUDE
    PATTERN "startup" EXCLUDE
    PATTERN "streams" EXCLUDE # it has no public header
    PATTERN "${imageryHeader}" EXCLUDE)
if(ROAMSCAN_BUILD_IMAGERY)
    install(FILES "${PROJECT_SOURCE_DIR}/roamscan/${imageryHeader}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/roamscan/imagery"
            COMPONENT ImageryDevelopment)
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/RoamscanDataStructuresConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfig.cmake" INSTALL_DESTINATION "${packageDir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(
    FILES "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfig.cmake"
          "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfigVersion.cmake"
    DESTINATION "${packageDir}"
    COMPONENT LibraryDevelopment)
if(ROAMSCAN_BUILD_IMAGERY)
    install(FILES "${PROJECT_SOURCE_DIR}/cmake/FindOpenCVImages.cmake" DESTINATION "${packageDir}" COMPONENT ImageryDevelopment)
endif()

list(TRANSFORM ROAMSCAN_INTERFACE_DEFINITIONS PREPEND -D OUTPUT_VARIABLE interfaceFlags)
list(JOIN interfaceFlags " " interfaceFlags)
set(privateRequirements "")
if(ROAMSCAN_STATIC)
    set(privateRequirements tbb)
endif()
roamscan_pkg_config(
    RoamscanDataStructures
    COMPONENT LibraryDevelopment
    DESCRIPTION "${PROJECT_DESCRIPTION}"
    REQUIRES "eigen3 >= 3.4"
    REQUIRES_PRIVATE "${privateRequirements}"
    CFLAGS "-I\${includedir} ${interfaceFlags}"
    LIBS "-L\${libdir} ${ROAMSCAN_STARTUP_LINK_OPTION} -lRoamscanDataStructures")
roamscan_pkg_config(
    RoamscanDataStructuresJson
    COMPONENT LibraryDevelopment
    DESCRIPTION "The functions of RoamscanDataStructures that use JSON values"
    REQUIRES "RoamscanDataStructures = ${PROJECT_VERSION}, nlohmann_json >= 3.6")
if(NOT ROAMSCAN_BUILD_IMAGERY)
    return()
endif()

# OpenCV's own pkg-config file needs all its modules, and not every system has it.
roamscan_opencv_flags(opencvCompileFlags opencvLinkFlags)
roamscan_pkg_config(
    RoamscanDataStructuresImagery
    COMPONENT ImageryDevelopment
    DESCRIPTION "The functions of RoamscanDataStructures that use OpenCV's pictures"
    REQUIRES "RoamscanDataStructuresJson = ${PROJECT_VERSION}"
    REQUIRES_PRIVATE "${privateRequirements}"
    CFLAGS "${opencvCompileFlags}"
    LIBS "-L\${libdir} -lRoamscanDataStructuresImagery ${opencvLinkFlags} -lopencv_core"
    LIBS_PRIVATE "-lopencv_imgcodecs")

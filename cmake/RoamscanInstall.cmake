# The installed package: the libraries, their public headers, and the files for find_package(RoamscanDataStructures).

include(CMakePackageConfigHelpers)

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/RoamscanDataStructures")

install(
    TARGETS RoamscanDataStructures
    EXPORT RoamscanDataStructuresTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/roamscan"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING
    PATTERN "*.h"
    PATTERN "detail" EXCLUDE
    PATTERN "startup" EXCLUDE)
install(
    EXPORT RoamscanDataStructuresTargets
    NAMESPACE RoamscanDataStructures::
    DESTINATION "${packageDir}")
# The components. Json needs nlohmann::json, Imagery also needs OpenCV.
foreach(component IN ITEMS Json Imagery)
    install(
        TARGETS Roamscan${component}
        EXPORT Roamscan${component}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
    install(
        EXPORT Roamscan${component}Targets
        NAMESPACE RoamscanDataStructures::
        DESTINATION "${packageDir}")
endforeach()
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/RoamscanDataStructuresConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfig.cmake" INSTALL_DESTINATION "${packageDir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfig.cmake"
              "${PROJECT_BINARY_DIR}/RoamscanDataStructuresConfigVersion.cmake"
              "${PROJECT_SOURCE_DIR}/cmake/FindOpenCVImages.cmake" DESTINATION "${packageDir}")

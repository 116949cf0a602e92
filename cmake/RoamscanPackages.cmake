# Packages by CPack: `./run package` builds and tests them. The binaries are those of the build.

if(NOT PROJECT_IS_TOP_LEVEL OR ROAMSCAN_STATIC)
    return()
endif()

set(CPACK_PACKAGE_VENDOR "RoamscanDataStructures developers")
set(CPACK_PACKAGE_CONTACT "RoamscanDataStructures developers <roamscan@users.noreply.github.com>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")

# For Windows, a zip file of all install components, with the DLLs that they need.
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME "${PROJECT_NAME}-${PROJECT_VERSION}-windows-x86_64")
    install(FILES README.md CHANGELOG.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    include(CPack)
    return()
endif()

# Debian packages, one for each install component. cmake/DebianFiles.cmake and cmake/DebianTriggers.cmake add what only these
# packages have.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianTriggers.cmake")
set(CPACK_ROAMSCAN_SOURCE_DIR "${PROJECT_SOURCE_DIR}")

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL Library LibraryDevelopment Imagery ImageryDevelopment)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SOURCE roamscandatastructures)
# The packages depend on each other as the components do, and on the packages of the libraries that they load.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/roamscan")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_IMAGERY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libroamscandatastructures0)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "poses over time for laser scans made while walking
The library stores what a walk with a laser scanner leaves: sensor samples,
poses over time and the positions of the devices. It interpolates the pose
at any instant and places scan points with it.")

set(CPACK_DEBIAN_IMAGERY_PACKAGE_NAME libroamscandatastructuresimagery0)
set(CPACK_DEBIAN_IMAGERY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_IMAGERY_DEPENDS Library)
set(CPACK_DEBIAN_IMAGERY_DESCRIPTION
    "panoramas of laser scans as folders of tiles
The library stores wide pictures as folders of tiles and reads them back.
It is apart from RoamscanDataStructures because it loads OpenCV.")

set(CPACK_DEBIAN_LIBRARYDEVELOPMENT_PACKAGE_NAME libroamscandatastructures-dev)
set(CPACK_DEBIAN_LIBRARYDEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_LIBRARYDEVELOPMENT_DEPENDS Library)
set(CPACK_DEBIAN_LIBRARYDEVELOPMENT_PACKAGE_DEPENDS "libeigen3-dev (>= 3.4), nlohmann-json3-dev (>= 3.6)")
set(CPACK_DEBIAN_LIBRARYDEVELOPMENT_DESCRIPTION
    "poses over time for laser scans made while walking (development files)
The headers of RoamscanDataStructures and its files for CMake and
pkg-config.")

set(CPACK_DEBIAN_IMAGERYDEVELOPMENT_PACKAGE_NAME libroamscandatastructuresimagery-dev)
set(CPACK_DEBIAN_IMAGERYDEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_IMAGERYDEVELOPMENT_DEPENDS Imagery LibraryDevelopment)
set(CPACK_DEBIAN_IMAGERYDEVELOPMENT_PACKAGE_DEPENDS "libopencv-core-dev, libopencv-imgcodecs-dev")
set(CPACK_DEBIAN_IMAGERYDEVELOPMENT_DESCRIPTION
    "panoramas of laser scans as folders of tiles (development files)
The header of the component Imagery of RoamscanDataStructures and its files
for CMake and pkg-config.")

if(ROAMSCAN_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL Tool)
    set(CPACK_DEBIAN_TOOL_PACKAGE_NAME roamscan)
    set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
    set(CPACK_COMPONENT_TOOL_DEPENDS Library Imagery)
    set(CPACK_DEBIAN_TOOL_DESCRIPTION
        "place laser scans made while walking along a trajectory
A command line tool that places the points of a scan along a recorded
trajectory, converts poses, and shows what recordings contain. It also
simulates a walk with a scanner.")
endif()

include(CPack)

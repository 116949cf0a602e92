# OpenCV's modules core and imgcodecs as the target OpenCVImages::OpenCVImages: from OpenCV's own package if it is
# installed, else from the headers and libraries. Debian splits OpenCV by module, but its CMake package needs all modules.

find_package(OpenCV QUIET CONFIG COMPONENTS core imgcodecs)
if(OpenCV_FOUND)
    set(OpenCVImages_INCLUDE_DIR "${OpenCV_INCLUDE_DIRS}")
    set(OpenCVImages_LIBRARIES opencv_core opencv_imgcodecs)
else()
    find_path(OpenCVImages_INCLUDE_DIR opencv2/imgcodecs.hpp PATH_SUFFIXES opencv4)
    find_library(OpenCVImages_CORE_LIBRARY opencv_core)
    find_library(OpenCVImages_IMGCODECS_LIBRARY opencv_imgcodecs)
    mark_as_advanced(OpenCVImages_INCLUDE_DIR OpenCVImages_CORE_LIBRARY OpenCVImages_IMGCODECS_LIBRARY)
    if(OpenCVImages_CORE_LIBRARY AND OpenCVImages_IMGCODECS_LIBRARY)
        set(OpenCVImages_LIBRARIES "${OpenCVImages_CORE_LIBRARY}" "${OpenCVImages_IMGCODECS_LIBRARY}")
    endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVImages REQUIRED_VARS OpenCVImages_LIBRARIES OpenCVImages_INCLUDE_DIR)
if(OpenCVImages_FOUND AND NOT TARGET OpenCVImages::OpenCVImages)
    add_library(OpenCVImages::OpenCVImages INTERFACE IMPORTED)
    target_include_directories(OpenCVImages::OpenCVImages INTERFACE "${OpenCVImages_INCLUDE_DIR}")
    target_link_libraries(OpenCVImages::OpenCVImages INTERFACE "${OpenCVImages_LIBRARIES}")
endif()

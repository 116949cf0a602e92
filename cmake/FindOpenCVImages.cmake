# The two parts of OpenCV that pictures are kept, read and written with, as the target OpenCVImages::OpenCVImages:
# from OpenCV's own package where there is one, else from its headers and libraries. A distribution may split OpenCV up
# and leave that package with the whole of it, which nothing here needs.

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

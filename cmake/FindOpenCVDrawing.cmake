# OpenCV's imgproc, which the tools draw with, as the target OpenCVDrawing::OpenCVDrawing: from OpenCV's own package if
# there is one, else from its header and library. The library itself must not need it.

find_package(OpenCV QUIET CONFIG COMPONENTS imgproc)
if(OpenCV_FOUND)
    set(OpenCVDrawing_INCLUDE_DIR "${OpenCV_INCLUDE_DIRS}")
    set(OpenCVDrawing_LIBRARY opencv_imgproc)
else()
    find_path(OpenCVDrawing_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4)
    find_library(OpenCVDrawing_LIBRARY opencv_imgproc)
    mark_as_advanced(OpenCVDrawing_INCLUDE_DIR OpenCVDrawing_LIBRARY)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVDrawing REQUIRED_VARS OpenCVDrawing_LIBRARY OpenCVDrawing_INCLUDE_DIR)
if(OpenCVDrawing_FOUND AND NOT TARGET OpenCVDrawing::OpenCVDrawing)
    add_library(OpenCVDrawing::OpenCVDrawing INTERFACE IMPORTED)
    target_include_directories(OpenCVDrawing::OpenCVDrawing INTERFACE "${OpenCVDrawing_INCLUDE_DIR}")
    target_link_libraries(OpenCVDrawing::OpenCVDrawing INTERFACE "${OpenCVDrawing_LIBRARY}")
endif()

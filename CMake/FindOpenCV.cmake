# SPDX-License-Identifier: Apache-2.0
# OpenCV::core and OpenCV::imgproc, from packages that come without a configuration of their own.

find_path(OpenCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
find_library(OpenCV_core_LIBRARY opencv_core)
find_library(OpenCV_imgproc_LIBRARY opencv_imgproc)
mark_as_advanced(OpenCV_INCLUDE_DIR OpenCV_core_LIBRARY OpenCV_imgproc_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCV REQUIRED_VARS OpenCV_core_LIBRARY OpenCV_imgproc_LIBRARY OpenCV_INCLUDE_DIR)

if(OpenCV_FOUND AND NOT TARGET OpenCV::core)
    foreach(part core imgproc)
        add_library(OpenCV::${part} UNKNOWN IMPORTED)
        set_target_properties(OpenCV::${part} PROPERTIES
            IMPORTED_LOCATION "${OpenCV_${part}_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${OpenCV_INCLUDE_DIR}")
    endforeach()
    target_link_libraries(OpenCV::imgproc INTERFACE OpenCV::core)
endif()

# SPDX-License-Identifier: Zlib
# Read by cpack before it makes a package, with SOURCE set to the source folder.
include(${SOURCE}/cmake/SourceDate.cmake)
# Each package has a description of its own; cpack would put this one above it.
unset(CPACK_PACKAGE_DESCRIPTION_SUMMARY)
set(CPACK_PRE_BUILD_SCRIPTS ${SOURCE}/cmake/PackageFolders.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${SOURCE}/cmake/PackageDone.cmake)
if(CPACK_TOPLEVEL_TAG MATCHES "Source")
    set(CPACK_SET_DESTDIR OFF)
    set(CPACK_INSTALL_SCRIPTS ${SOURCE}/cmake/PackageSource.cmake)
endif()

# SPDX-License-Identifier: Zlib
# Run by cpack after it has made packages.
if(CPACK_GENERATOR STREQUAL "DEB")
    execute_process(
        COMMAND ${CMAKE_CURRENT_LIST_DIR}/../packaging/settle_modes ${CPACK_PACKAGE_FILES}
        COMMAND_ERROR_IS_FATAL ANY)
endif()

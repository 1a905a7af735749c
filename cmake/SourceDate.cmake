# SPDX-License-Identifier: Zlib
# Included by install and package scripts, with SOURCE set to the source folder. Unless
# SOURCE_DATE_EPOCH is set, sets it to the time of the commit. Every date in the packages comes from
# it, so two packages of one commit are identical byte for byte.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    if(EXISTS ${SOURCE}/packaging/source-date) # written into the source package
        file(STRINGS ${SOURCE}/packaging/source-date epoch)
    else()
        execute_process(COMMAND git -C ${SOURCE} log -1 --format=%ct OUTPUT_VARIABLE epoch
            OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    if(NOT epoch MATCHES "^[0-9]+$")
        string(TIMESTAMP epoch "%s" UTC)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${epoch})
endif()

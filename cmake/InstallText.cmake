# SPDX-License-Identifier: Zlib
# Included by install scripts, since the prefix is not known earlier: fills in @VERSION@, @DATE@ and
# so on in TEMPLATE, and installs it in FOLDER (below the prefix) as NAME. If GZIP is set, the file
# is compressed and has the suffix .gz. WORK is a folder of the build tree, SOURCE that of the source.
include(${SOURCE}/cmake/SourceDate.cmake)
string(TIMESTAMP DATE "%Y-%m-%d" UTC)
string(TIMESTAMP MAIL_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(PREFIX ${CMAKE_INSTALL_PREFIX}) # empty for the root
if("${PREFIX}" MATCHES "^[^/]")
    get_filename_component(PREFIX ${PREFIX} ABSOLUTE) # the text is read from other folders
endif()

# A licence as a field of a Debian copyright file: a blank before each line, a dot on empty ones.
foreach(licence CC-BY-4.0 OFL-1.1 Zlib)
    file(READ ${SOURCE}/LICENSES/${licence}.txt text)
    string(STRIP "${text}" text)
    string(REGEX REPLACE "[ \t]+\n" "\n" text "${text}")
    string(REPLACE "\n" "\n " text " ${text}")
    string(REGEX REPLACE "\n \n" "\n .\n" text "${text}")
    string(REGEX REPLACE "\n \n" "\n .\n" text "${text}") # every second of several empty lines
    set(LICENCE_${licence} "${text}")
endforeach()

set(file ${WORK}/${FOLDER}/${NAME})
configure_file(${TEMPLATE} ${file} @ONLY NEWLINE_STYLE UNIX)
if(GZIP)
    execute_process(COMMAND ${GZIP} -9nc ${file} OUTPUT_FILE ${file}.gz COMMAND_ERROR_IS_FATAL ANY)
    string(APPEND file .gz)
endif()
file(INSTALL ${file} DESTINATION ${PREFIX}/${FOLDER})

# SPDX-License-Identifier: Zlib
# Where files go below the prefix. The programs look for data in their own folder, so it contains
# links to the data, and users start the programs through links. All links are relative, so the tree
# can be moved. There are two components: game, and tools for players and authors.
string(REGEX REPLACE "^[a-z]+://([^/:]+).*$" "\\1" siteHost "${TARNWICK_SITE}")
string(REPLACE "." ";" siteWords "${siteHost}")
list(REVERSE siteWords)
list(JOIN siteWords "." applicationId)
string(APPEND applicationId ".tarnwick") # the game's name in software catalogues
set(maintainers "The Tarnwick Episode developers")
set(maintainerAddress "developers@${siteHost}")

# Where files go can be set with -D, as paths below the prefix. The defaults are Debian's for games.
set(CMAKE_INSTALL_DOCDIR share/doc/tarnwick CACHE STRING "Folder for the documents")
include(GNUInstallDirs)
set(TARNWICK_GAMES_DIR games CACHE STRING "Folder for the command that starts the game")
set(TARNWICK_PROGRAM_DIR lib/games/tarnwick CACHE STRING "Folder for the programs")
set(TARNWICK_DATA_DIR ${CMAKE_INSTALL_DATADIR}/games/tarnwick CACHE STRING "Folder for the data")
foreach(folder CMAKE_INSTALL_BINDIR CMAKE_INSTALL_DATADIR CMAKE_INSTALL_DOCDIR CMAKE_INSTALL_MANDIR
        TARNWICK_GAMES_DIR TARNWICK_PROGRAM_DIR TARNWICK_DATA_DIR)
    if(IS_ABSOLUTE "${${folder}}")
        message(FATAL_ERROR "${folder} must be a path below the prefix, not ${${folder}}")
    endif()
endforeach()
set(shareFolder ${CMAKE_INSTALL_DATADIR})
set(programFolder ${TARNWICK_PROGRAM_DIR})
set(dataFolder ${TARNWICK_DATA_DIR})
set(manFolder ${CMAKE_INSTALL_MANDIR})
find_program(GZIP_PROGRAM gzip REQUIRED)

# install_link(FOLDER NAME TARGET COMPONENT): a relative link; all paths are below the prefix.
function(install_link folder name target component)
    file(RELATIVE_PATH destination /${folder} /${target})
    set(link ${PROJECT_BINARY_DIR}/packaging/links/${folder}/${name})
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging/links/${folder})
    file(CREATE_LINK ${destination} ${link} SYMBOLIC)
    install(FILES ${link} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# install_text(TEMPLATE FOLDER NAME COMPONENT [COMPRESS] [EXCLUDE_FROM_ALL]): a file of packaging/,
# with values filled in during the installation. EXCLUDE_FROM_ALL: for packages only.
function(install_text template folder name component)
    set(gzip)
    if(COMPRESS IN_LIST ARGN)
        set(gzip ${GZIP_PROGRAM})
    endif()
    list(FILTER ARGN INCLUDE REGEX EXCLUDE_FROM_ALL)
    install(CODE "
        set(SOURCE \"${PROJECT_SOURCE_DIR}\")
        set(WORK \"${PROJECT_BINARY_DIR}/packaging\")
        set(VERSION \"${PROJECT_VERSION}\")
        set(RELEASE \"${TARNWICK_PACKAGE_RELEASE}\")
        set(SITE \"${TARNWICK_SITE}\")
        set(APPLICATION_ID \"${applicationId}\")
        set(MAINTAINERS \"${maintainers}\")
        set(MAINTAINER_ADDRESS \"${maintainerAddress}\")
        set(GAMES_DIR \"${TARNWICK_GAMES_DIR}\")
        set(BIN_DIR \"${CMAKE_INSTALL_BINDIR}\")
        set(PROGRAM_DIR \"${TARNWICK_PROGRAM_DIR}\")
        set(DATA_DIR \"${TARNWICK_DATA_DIR}\")
        set(GZIP \"${gzip}\")
        set(TEMPLATE \"${PROJECT_SOURCE_DIR}/packaging/${template}\")
        set(FOLDER \"${folder}\")
        set(NAME \"${name}\")
        include(\"${PROJECT_SOURCE_DIR}/cmake/InstallText.cmake\")"
        COMPONENT ${component} ${ARGN})
endfunction()

# install_man(COMPONENT PAGE...)
function(install_man component)
    foreach(page IN LISTS ARGN)
        string(REGEX MATCH "[0-9]$" section ${page})
        install_text(man/${page}.in ${manFolder}/man${section} ${page} ${component} COMPRESS)
    endforeach()
endfunction()

install(TARGETS tarnwick RUNTIME DESTINATION ${programFolder} COMPONENT game)
install_link(${TARNWICK_GAMES_DIR} tarnwick ${programFolder}/tarnwick game)
foreach(part levels/*.png fonts/*.ttf synthPatches/*.inl pitches/*.txt)
    cmake_path(GET part PARENT_PATH folder)
    cmake_path(GET part FILENAME pattern)
    install(DIRECTORY data/${folder} DESTINATION ${dataFolder} COMPONENT game
        FILES_MATCHING PATTERN ${pattern})
    install_link(${programFolder} ${folder} ${dataFolder}/${folder} game)
endforeach()
install(FILES data/levels/tiles.gpl DESTINATION ${dataFolder}/levels COMPONENT game)

# Each tool is installed under its OUTPUT_NAME, which starts with "tarnwick-".
foreach(tool levelcheck render_wav replay)
    get_target_property(name ${tool} OUTPUT_NAME)
    install(TARGETS ${tool} RUNTIME DESTINATION ${programFolder} COMPONENT tools)
    install_link(${CMAKE_INSTALL_BINDIR} ${name} ${programFolder}/${name} tools)
    install_man(tools ${name}.1)
    install(FILES packaging/completion/${name}
        DESTINATION ${shareFolder}/bash-completion/completions COMPONENT tools)
endforeach()
install_text(tarnwick-record.desktop.in ${shareFolder}/applications tarnwick-record.desktop tools)

install_man(game tarnwick.6 tarnwick-level.5 tarnwick-patch.5 tarnwick-pitch.5
    tarnwick-settings.5)
install_link(${manFolder}/man5 Corvale.conf.5.gz ${manFolder}/man5/tarnwick-settings.5.gz game)
install_text(tarnwick.desktop.in ${shareFolder}/applications tarnwick.desktop game)
install_text(metainfo.xml.in ${shareFolder}/metainfo ${applicationId}.metainfo.xml game)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES packaging/icons/tarnwick-${size}.png RENAME tarnwick.png
        DESTINATION ${shareFolder}/icons/hicolor/${size}x${size}/apps COMPONENT game)
endforeach()
install(FILES packaging/icons/tarnwick.svg DESTINATION ${shareFolder}/icons/hicolor/scalable/apps
    COMPONENT game)

# The Debian packages contain these in another form.
install(FILES LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents)
install(DIRECTORY LICENSES DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents)

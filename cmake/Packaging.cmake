# SPDX-License-Identifier: Zlib
# cpack makes two Debian packages, one per component; the target package_source makes a tarball. The
# first digit sorts these packages before those that a distribution makes of the same version.
set(TARNWICK_PACKAGE_RELEASE 0upstream1)

foreach(package tarnwick tarnwick-tools)
    set(component game)
    if(package STREQUAL tarnwick-tools)
        set(component tools)
    endif()
    install_text(debian/copyright.in share/doc/${package} copyright ${component} EXCLUDE_FROM_ALL)
    install_text(debian/changelog.in share/doc/${package} changelog.Debian ${component}
        COMPRESS EXCLUDE_FROM_ALL)
    install_text(../CHANGELOG.md share/doc/${package} changelog ${component}
        COMPRESS EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_VENDOR "${maintainers}")
set(CPACK_PACKAGE_CONTACT "${maintainers} <${maintainerAddress}>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
# The install scripts need to know the final prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/packaging/CPackProject.cmake)
file(WRITE ${CPACK_PROJECT_CONFIG_FILE} "set(SOURCE \"${PROJECT_SOURCE_DIR}\")
include(\"${PROJECT_SOURCE_DIR}/cmake/PackageProject.cmake\")
")

set(CPACK_COMPONENTS_ALL game tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${TARNWICK_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TARNWICK_SITE})
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_GAME_PACKAGE_NAME tarnwick)
set(CPACK_DEBIAN_GAME_PACKAGE_SUGGESTS tarnwick-tools)
set(CPACK_DEBIAN_GAME_DESCRIPTION "arcade game: run and kick off walls to reach a speed
One runner, one very large level seen from the side, one goal: a speed. Run,
jump and kick off walls; there is no score, no timer and no death, only a bar
at the top of the screen and a mark on it.
.
At the goal, a vortex of rings covers the whole screen and changes its colours
eight times a second. If you are sensitive to flashing light, stop before the
goal.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME tarnwick-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
    "tarnwick (= ${PROJECT_VERSION}-${TARNWICK_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS ffmpeg)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "Tarnwick Episode: tools for players and authors
tarnwick-replay keeps runs of the arcade game Tarnwick Episode. You can watch
a run, check its time, race against it and make a film of it.
.
Levels, voices and tunes of the game are pictures and small text files that you
can change.
.
tarnwick-levelcheck reports what is wrong with a level, and searches for the
fastest path through it. tarnwick-render writes a note, a drum or the music to
a sound file, exactly as the game plays it.")

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME tarnwick-${PROJECT_VERSION})
set(CPACK_SOURCE_INSTALLED_DIRECTORIES "")
include(CPack)

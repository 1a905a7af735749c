# SPDX-License-Identifier: Zlib
# Run by cpack in the folder that the source package is made from: copies every file of the source
# that git knows, as it stands there, and writes down the moment of the commit. A source without
# git, a package's own, is copied whole but for build trees.
get_filename_component(source ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
execute_process(COMMAND git -C ${source} ls-files --recurse-submodules
    OUTPUT_VARIABLE files RESULT_VARIABLE failure ERROR_QUIET)
if(failure OR NOT EXISTS ${source}/.git)
    file(GLOB_RECURSE files RELATIVE ${source} LIST_DIRECTORIES OFF ${source}/*)
    list(FILTER files EXCLUDE REGEX "^build/")
else()
    string(REGEX REPLACE "\n$" "" files "${files}")
    string(REPLACE "\n" ";" files "${files}")
endif()
list(SORT files)
set(read OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(run ${read} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
foreach(name IN LISTS files)
    if(NOT EXISTS ${source}/${name}) # deleted, and not yet told to git
        continue()
    endif()
    cmake_path(GET name PARENT_PATH folder)
    execute_process(COMMAND test -x ${source}/${name} RESULT_VARIABLE plain)
    set(permissions ${run})
    if(plain)
        set(permissions ${read})
    endif()
    file(INSTALL ${source}/${name} DESTINATION ${CMAKE_INSTALL_PREFIX}/${folder}
        PERMISSIONS ${permissions} MESSAGE_NEVER)
endforeach()
file(WRITE ${CMAKE_INSTALL_PREFIX}/packaging/source-date "$ENV{SOURCE_DATE_EPOCH}\n")
file(CHMOD ${CMAKE_INSTALL_PREFIX}/packaging/source-date PERMISSIONS ${read})

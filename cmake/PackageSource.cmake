# SPDX-License-Identifier: Zlib
# Run by cpack in the folder that becomes the source package: copies every file that git tracks,
# with its current contents, and writes the time of the commit to a file. Without git, as in an
# unpacked source package, it copies everything but build trees.
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
    if(NOT EXISTS ${source}/${name}) # deleted, but still tracked
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

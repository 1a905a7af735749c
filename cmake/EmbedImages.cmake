# SPDX-License-Identifier: Zlib
# Writes OUTPUT, the C++ source of the picture tables and the icon, when run as
#   cmake -D OUTPUT=... -D FOLDER=... -D GLYPHS=a,b -D SPRITES=a,b -D ICON=c -P EmbedImages.cmake
# with the picture files in the order of the tables, relative to FOLDER.
cmake_minimum_required(VERSION 3.25)

function(append_array file name)
    file(READ ${FOLDER}/${file} bytes HEX)
    string(REPEAT . 48 line) # 24 bytes in hexadecimal
    string(REGEX REPLACE "(${line})" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    file(APPEND ${OUTPUT}.new "static const unsigned char ${name}[] = { // ${file}\n${bytes}};\n\n")
endfunction()

function(append_table prefix files)
    string(REPLACE "," ";" files "${files}")
    set(index 0)
    set(entries "")
    foreach(file IN LISTS files)
        append_array(${file} ${prefix}${index})
        string(APPEND entries "    {${prefix}${index}, sizeof ${prefix}${index}},\n")
        math(EXPR index "${index} + 1")
    endforeach()
    file(APPEND ${OUTPUT}.new
        "const EmbeddedImage ${prefix}Images[${prefix}ImageCount] = {\n${entries}};\n"
        "static_assert(${index} == ${prefix}ImageCount);\n\n")
endfunction()

file(WRITE ${OUTPUT}.new "#include \"images/EmbeddedImages.h\"\n\n")
append_table(glyph "${GLYPHS}")
append_table(sprite "${SPRITES}")
append_array(${ICON} icon)
file(APPEND ${OUTPUT}.new "const EmbeddedImage iconImage = {icon, sizeof icon};\n")
file(RENAME ${OUTPUT}.new ${OUTPUT})

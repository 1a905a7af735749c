# SPDX-License-Identifier: Zlib
# Makes faults hard to exploit, and keeps the build folder out of the programs. The sanitizers check
# more, and don't go with these options.
if(CMAKE_CXX_FLAGS MATCHES "sanitize")
    return()
endif()

set(optimized "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
set(program "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>")
add_compile_options("$<${optimized}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
    -fstack-protector-strong -Wformat -Werror=format-security -fPIE)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    add_compile_options(-fstack-clash-protection -fcf-protection)
endif()
add_link_options(LINKER:-z,relro "$<${program}:-pie>")

add_compile_options("$<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>")

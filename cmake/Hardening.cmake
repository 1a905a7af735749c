# SPDX-License-Identifier: Zlib
# Makes faults hard to exploit, and keeps the path of the source folder out of the programs. The
# sanitizers check more, and don't work with these options.
if(CMAKE_CXX_FLAGS MATCHES "sanitize")
    return()
endif()

# If the compiler or the distribution already sets a level of _FORTIFY_SOURCE, it stays.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS -O2)
check_cxx_source_compiles("#ifndef _FORTIFY_SOURCE
#error unset
#endif
int main() {}" fortifySourceIsSet)
unset(CMAKE_REQUIRED_FLAGS)
set(fortify)
if(NOT fortifySourceIsSet)
    set(fortify -D_FORTIFY_SOURCE=2)
endif()

set(optimized "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
set(program "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>")
add_compile_options("$<${optimized}:${fortify}>" -fstack-protector-strong -Wformat
    -Werror=format-security -fPIE)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    add_compile_options(-fstack-clash-protection -fcf-protection)
endif()
add_link_options(LINKER:-z,relro "$<${program}:-pie>")

add_compile_options("$<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>")

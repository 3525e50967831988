# stemhaven_flags: the compiler options of every target of the project.
add_library(stemhaven_flags INTERFACE)
target_compile_options(stemhaven_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
target_compile_definitions(stemhaven_flags INTERFACE QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(STEMHAVEN_SANITIZE STREQUAL "address")
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(STEMHAVEN_SANITIZE STREQUAL "thread")
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
    add_link_options(-fsanitize=thread)
    # GCC warns that TSan does not model the fences in the standard library's headers.
    target_compile_options(stemhaven_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>)
elseif(STEMHAVEN_SANITIZE STREQUAL "fuzzer")
    # Clang only. The fuzz targets link the fuzzer itself; everything else only reports to it.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(NOT STEMHAVEN_SANITIZE STREQUAL "")
    message(FATAL_ERROR "STEMHAVEN_SANITIZE is '${STEMHAVEN_SANITIZE}'; it must be address, thread, fuzzer or empty")
endif()

# stemhaven_layer(NAME SOURCES file... [USES library...] [QT])
#
# Makes the static library stemhaven_NAME from the folder of the calling list file, which must be src/NAME.
# Headers are included as "NAME/Header.h". The library's include root is a folder of the build that holds nothing but a
# link to src/NAME, so a file sees the layers that its library links and no others: an include of a higher layer does
# not compile.
function(stemhaven_layer name)
    cmake_parse_arguments(LAYER "QT" "" "SOURCES;USES" ${ARGN})

    set(include_root ${CMAKE_BINARY_DIR}/include/${name})
    file(MAKE_DIRECTORY ${include_root})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_root}/${name} SYMBOLIC)

    add_library(stemhaven_${name} STATIC ${LAYER_SOURCES})
    target_include_directories(stemhaven_${name} PUBLIC ${include_root})
    target_link_libraries(stemhaven_${name} PUBLIC ${LAYER_USES} PRIVATE stemhaven_flags)
    if(LAYER_QT)
        set_target_properties(stemhaven_${name} PROPERTIES AUTOMOC ON)
    endif()
endfunction()

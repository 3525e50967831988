# stemhaven_room(NAME SOURCES file... [USES library...] [QT])
#
# Makes the static library stemhaven_NAME from the folder of the calling list file, which must be src/NAME.
# Headers are included as "NAME/Header.h". The library offers an include folder in which NAME is the only entry, so a
# file sees the folders that its library links and no others: an include that looks up the house does not compile.
function(stemhaven_room name)
    cmake_parse_arguments(ROOM "QT" "" "SOURCES;USES" ${ARGN})

    set(door ${CMAKE_BINARY_DIR}/include/${name})
    file(MAKE_DIRECTORY ${door})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${door}/${name} SYMBOLIC)

    add_library(stemhaven_${name} STATIC ${ROOM_SOURCES})
    target_include_directories(stemhaven_${name} PUBLIC ${door})
    target_link_libraries(stemhaven_${name} PUBLIC ${ROOM_USES} PRIVATE stemhaven_flags)
    if(ROOM_QT)
        set_target_properties(stemhaven_${name} PROPERTIES AUTOMOC ON)
    endif()
endfunction()

# stemhaven_resources(TARGET): gives a program with our windows the translations and the icon font.
function(stemhaven_resources target)
    qt_add_translation(translations ${CMAKE_SOURCE_DIR}/translations/Stemhaven_de_DE.ts OPTIONS -silent)
    qt_add_resources(${target} translations PREFIX "/i18n" BASE ${CMAKE_CURRENT_BINARY_DIR} FILES ${translations})

    # Fetched by the commands in the root, perhaps after the build was configured. Without it buttons show text.
    set(font_folder ${CMAKE_SOURCE_DIR}/build/fonts)
    file(GLOB icon_font CONFIGURE_DEPENDS ${font_folder}/Phosphor-Light.ttf)
    if(icon_font)
        qt_add_resources(${target} icon_font PREFIX "/icons/Phosphor" BASE ${font_folder} FILES ${icon_font})
    endif()
endfunction()

# What is installed where, and the Debian package made of it.
include(GNUInstallDirs)

install(TARGETS zelto zelto-stampa zelto-converti RUNTIME)
install(FILES "${ZELTO_MASTER}" "${ZELTO_EXAMPLE_JOB}" DESTINATION "${CMAKE_INSTALL_DATADIR}/zelto")
install(FILES packaging/desktop/zelto.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES packaging/desktop/org.zelto.Zelto.metainfo.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES packaging/desktop/zelto-mime.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages"
        RENAME zelto.xml)
install(FILES packaging/debian/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zelto")

# The program's icon, as it is and as pictures of the usual sizes.
set(zelto_icon "${CMAKE_SOURCE_DIR}/src/shell/icons/zelto.svg")
set(zelto_icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
install(FILES "${zelto_icon}" DESTINATION "${zelto_icons}/scalable/apps")
add_executable(zelto_render_icon packaging/render_icon.cpp)
target_link_libraries(zelto_render_icon PRIVATE zelto_flags Qt6::Gui Qt6::Svg)
set(zelto_package_files)
foreach(size 16 22 24 32 48 64 128 256 512)
    set(picture "${CMAKE_BINARY_DIR}/package/zelto-${size}.png")
    add_custom_command(
        OUTPUT "${picture}"
        COMMAND zelto_render_icon "${zelto_icon}" ${size} "${picture}"
        DEPENDS zelto_render_icon "${zelto_icon}"
        VERBATIM)
    list(APPEND zelto_package_files "${picture}")
    install(FILES "${picture}" DESTINATION "${zelto_icons}/${size}x${size}/apps" RENAME zelto.png)
endforeach()

# Texts that Debian wants compressed. The manual pages are Italian, also for those who ask for no language.
foreach(text docs/man/zelto.1 docs/man/zelto-stampa.1 docs/man/zelto-converti.1 packaging/debian/changelog)
    get_filename_component(name "${text}" NAME)
    set(compressed "${CMAKE_BINARY_DIR}/package/${name}.gz")
    add_custom_command(
        OUTPUT "${compressed}"
        COMMAND sh -c "gzip -9nc '${CMAKE_SOURCE_DIR}/${text}' > '${compressed}'"
        DEPENDS "${CMAKE_SOURCE_DIR}/${text}"
        VERBATIM)
    list(APPEND zelto_package_files "${compressed}")
    if(name STREQUAL "changelog")
        install(FILES "${compressed}" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zelto")
    else()
        install(FILES "${compressed}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
        install(FILES "${compressed}" DESTINATION "${CMAKE_INSTALL_MANDIR}/it/man1")
    endif()
endforeach()
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/package")
add_custom_target(zelto_package_files ALL DEPENDS ${zelto_package_files})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelto)
set(CPACK_PACKAGE_CONTACT "The Zelto developers <zelto@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "millesimal tables of condominiums")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/package")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The reports ask for fonts of these measures, Qt's own dialogs for their translation, icons for the
# plugin that draws them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, qt6-svg-plugins | libqt6svg6 (<< 6.5), qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS cups-client)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Computes the thousandth shares by which ownership and expenses of an Italian
condominium are divided among its units, prints them with a technical report
and divides amounts by them. The interface is Italian.")
include(CPack)

# The program looks for its two text files beside itself, so all three are installed into one folder,
# with a link to the program among the commands. The table of clients is there to be read and copied.
include(GNUInstallDirs)

set(SPELLWICK_HOME ${CMAKE_INSTALL_LIBDIR}/spellwick)

install(TARGETS spellwick RUNTIME DESTINATION ${SPELLWICK_HOME})
install(FILES data/SpellData.txt data/ReadMe.wri data/GameClients.txt DESTINATION ${SPELLWICK_HOME})
install(CODE "
    set(commands \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${commands}\")
    file(CREATE_LINK ../${SPELLWICK_HOME}/spellwick \"\${commands}/spellwick\" SYMBOLIC)")

install(FILES packaging/linux/spellwick.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
foreach(file spellwick.1 spellwick.metainfo.xml)
    configure_file(packaging/linux/${file}.in ${CMAKE_BINARY_DIR}/packaging/${file} @ONLY)
endforeach()
install(FILES ${CMAKE_BINARY_DIR}/packaging/spellwick.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${CMAKE_BINARY_DIR}/packaging/spellwick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES data/pictures/spellwick-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME spellwick.png)
endforeach()
install(FILES data/art/icon/spellwick.svg DESTINATION ${icons}/scalable/apps)

# The program looks for its two text files beside itself, so all three are installed into one folder,
# with a link to the program among the commands.
include(GNUInstallDirs)

set(SPELLWICK_HOME ${CMAKE_INSTALL_LIBDIR}/spellwick)

install(TARGETS spellwick RUNTIME DESTINATION ${SPELLWICK_HOME})
install(FILES data/SpellData.txt data/ReadMe.wri DESTINATION ${SPELLWICK_HOME})
install(CODE "
    set(commands \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${commands}\")
    file(CREATE_LINK ../${SPELLWICK_HOME}/spellwick \"\${commands}/spellwick\" SYMBOLIC)")

install(FILES packaging/linux/spellwick.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/linux/spellwick.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/linux/spellwick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES data/pictures/spellwick-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME spellwick.png)
endforeach()
install(FILES data/art/icon/spellwick.svg DESTINATION ${icons}/scalable/apps)

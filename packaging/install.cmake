# The program looks for its text files beside itself, and the bridge for its halves, so all are installed
# into one folder, with links to the programs among the commands. The table of clients is there to be read
# and copied.
include(GNUInstallDirs)

set(SPELLWICK_HOME ${CMAKE_INSTALL_LIBDIR}/spellwick)

install(TARGETS spellwick spellwick-wine-bridge RUNTIME DESTINATION ${SPELLWICK_HOME})
install(FILES ${SPELLWICK_BRIDGE_HALVES} DESTINATION ${SPELLWICK_HOME})
install(FILES data/SpellData.txt data/ReadMe.wri data/GameClients.txt data/AssistTools.txt DESTINATION ${SPELLWICK_HOME})
install(CODE "
    set(commands \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${commands}\")
    foreach(program spellwick spellwick-bridge)
        file(CREATE_LINK ../${SPELLWICK_HOME}/\${program} \"\${commands}/\${program}\" SYMBOLIC)
    endforeach()")

install(FILES packaging/linux/spellwick.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
foreach(file spellwick.1 spellwick-bridge.1 spellwick.metainfo.xml)
    configure_file(packaging/linux/${file}.in ${CMAKE_BINARY_DIR}/packaging/${file} @ONLY)
endforeach()
install(FILES ${CMAKE_BINARY_DIR}/packaging/spellwick.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${CMAKE_BINARY_DIR}/packaging/spellwick.1 ${CMAKE_BINARY_DIR}/packaging/spellwick-bridge.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES data/pictures/spellwick-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME spellwick.png)
endforeach()
install(FILES data/art/icon/spellwick.svg DESTINATION ${icons}/scalable/apps)

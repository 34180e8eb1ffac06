# The program looks for its text files beside itself, and the bridge for its halves, so all are installed
# into one folder, with links to the programs among the commands. The table of clients is there to be read
# and copied.
include(GNUInstallDirs)

set(SPELLWICK_HOME ${CMAKE_INSTALL_LIBDIR}/spellwick)

install(TARGETS spellwick spellwick-wine-bridge spellwick-practice-game spellwick-practice-tool
    RUNTIME DESTINATION ${SPELLWICK_HOME})
install(FILES ${SPELLWICK_BRIDGE_HALVES} DESTINATION ${SPELLWICK_HOME})
install(FILES data/SpellData.txt data/ReadMe.wri data/GameClients.txt data/AssistTools.txt DESTINATION ${SPELLWICK_HOME})
install(PROGRAMS packaging/linux/spellwick-practice DESTINATION ${SPELLWICK_HOME})
install(PROGRAMS practice/prepare.py DESTINATION ${SPELLWICK_HOME} RENAME spellwick-practice-settings)
install(CODE "
    set(commands \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${commands}\")
    foreach(program spellwick spellwick-bridge spellwick-practice spellwick-practice-game spellwick-practice-tool)
        file(CREATE_LINK ../${SPELLWICK_HOME}/\${program} \"\${commands}/\${program}\" SYMBOLIC)
    endforeach()")

install(FILES packaging/linux/spellwick.desktop packaging/linux/spellwick-practice.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

# Where the pictures of docs/ are published for software centres.
set(SPELLWICK_SITE https://spellwick.invalid)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${CMAKE_SOURCE_DIR}/tools/release_notes)
execute_process(
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/release_notes ${CMAKE_SOURCE_DIR} --appstream
    OUTPUT_VARIABLE SPELLWICK_RELEASES OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(pages spellwick.1 spellwick-bridge.1 spellwick-practice.1 spellwick-practice-game.1 spellwick-practice-tool.1)
foreach(file ${pages} spellwick.metainfo.xml)
    configure_file(packaging/linux/${file}.in ${CMAKE_BINARY_DIR}/packaging/${file} @ONLY)
endforeach()
install(FILES ${CMAKE_BINARY_DIR}/packaging/spellwick.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
list(TRANSFORM pages PREPEND ${CMAKE_BINARY_DIR}/packaging/)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES data/pictures/spellwick-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME spellwick.png)
endforeach()
install(FILES data/art/icon/spellwick.svg DESTINATION ${icons}/scalable/apps)

# What cmake --install puts where: the programs, what they open, and what a desktop knows them by.
# The programs find share/corvanta by their own place, so that the whole can be moved.
include(GNUInstallDirs)

set(packaging "${PROJECT_SOURCE_DIR}/packaging")

install(TARGETS corvanta-batch corvanta-tool RUNTIME COMPONENT batch)
install(DIRECTORY samples DESTINATION "${CMAKE_INSTALL_DATADIR}/corvanta" COMPONENT batch)
install(FILES "${packaging}/man/corvanta-batch.1" "${packaging}/man/corvanta-tool.1"
  DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT batch)
if(EXISTS "${packaging}/completion/corvanta-tool")
  install(FILES "${packaging}/completion/corvanta-tool"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT batch)
endif()

if(CORVANTA_DESKTOP)
  configure_file("${packaging}/corvanta.metainfo.xml.in"
    "${PROJECT_BINARY_DIR}/com.pewterlantern.corvanta.metainfo.xml" @ONLY)
  install(TARGETS corvanta RUNTIME COMPONENT desktop)
  install(DIRECTORY docs/help DESTINATION "${CMAKE_INSTALL_DATADIR}/corvanta" COMPONENT desktop)
  install(FILES "${packaging}/man/corvanta.1"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT desktop)
  install(FILES "${packaging}/corvanta.desktop"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT desktop)
  install(FILES "${packaging}/corvanta.svg"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" COMPONENT desktop)
  install(FILES "${packaging}/corvanta.mime.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" COMPONENT desktop RENAME corvanta.xml)
  install(FILES "${PROJECT_BINARY_DIR}/com.pewterlantern.corvanta.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT desktop)
endif()

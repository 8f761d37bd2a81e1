# What `cmake --install` puts in place on a desktop system, and the Debian package built from it
# with CPack (scripts/package). The programs install their own targets.

set(QUILLON_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/quillon)
set(data ${PROJECT_SOURCE_DIR}/data)
install(FILES ${data}/quillon.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${data}/quillon.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${data}/quillon-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME quillon.xml)
install(FILES ${data}/quillon-cli.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME quillon-cli)
install(FILES ${data}/copyright DESTINATION ${QUILLON_DOC_DIR})

# Manual pages and the changelog go out compressed, as Debian wants them; -n keeps the
# compressed bytes the same from build to build.
find_program(QUILLON_GZIP gzip REQUIRED)
set(QUILLON_VERSION ${PROJECT_VERSION})
set(compressed)
foreach(page quillon quillon-cli telvane-sim)
  configure_file(${PROJECT_SOURCE_DIR}/man/${page}.1 ${CMAKE_BINARY_DIR}/man/${page}.1 @ONLY)
  set(gz ${CMAKE_BINARY_DIR}/man/${page}.1.gz)
  add_custom_command(OUTPUT ${gz}
    COMMAND ${QUILLON_GZIP} -9nc ${CMAKE_BINARY_DIR}/man/${page}.1 > ${gz}
    DEPENDS ${CMAKE_BINARY_DIR}/man/${page}.1 VERBATIM)
  install(FILES ${gz} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  list(APPEND compressed ${gz})
endforeach()
set(changelog ${CMAKE_BINARY_DIR}/doc/changelog.gz)
add_custom_command(OUTPUT ${changelog}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/doc
  COMMAND ${QUILLON_GZIP} -9nc ${data}/changelog > ${changelog}
  DEPENDS ${data}/changelog VERBATIM)
install(FILES ${changelog} DESTINATION ${QUILLON_DOC_DIR})
add_custom_target(quillon_compressed_docs ALL DEPENDS ${compressed} ${changelog})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillon)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Quillon developers")
set(CPACK_PACKAGE_CONTACT "Quillon developers <developers@quillon.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "configuration tool for Telvane SMS alarm modules")
# CPack puts the summary in front and marks the empty line as Debian wants it.
set(CPACK_PACKAGE_DESCRIPTION
    "Quillon edits the message texts, filter texts, phone book, SMS-centre number,
PIN and flag assignments of a Telvane SMS alarm module, keeps them in project
files, downloads them to the module over a serial cable, reads them back,
identifies the module and reads its logger.

The package holds the window (quillon), the command-line program for scripts
(quillon-cli) and a simulated module on a pseudo-terminal (telvane-sim).")
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The window needs a platform plugin that no library links.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR}/package)
include(CPack)

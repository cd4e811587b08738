# The Debian package (make package): the program, its menu entry, icons, AppStream data, manual
# page and documents. Only the program and its data are installed; tests and benchmarks are not.
include(GNUInstallDirs)
# The package is made from the program alone: installing does not first build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY TRUE)

set(PKG_DIR ${CMAKE_SOURCE_DIR}/packaging)
set(APP_ID org.tolvane.Tolvane)

# A new version is written in the changelog and in the AppStream releases too.
file(READ ${PKG_DIR}/changelog PKG_CHANGELOG)
file(READ ${PKG_DIR}/${APP_ID}.metainfo.xml PKG_METAINFO)
if(NOT PKG_CHANGELOG MATCHES "^tolvane \\(${PROJECT_VERSION}\\)"
   OR NOT PKG_METAINFO MATCHES "<release version=\"${PROJECT_VERSION}\"")
  message(WARNING "packaging/changelog and the metainfo's releases do not name version "
                  "${PROJECT_VERSION} first")
endif()

install(TARGETS tolvane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PKG_DIR}/${APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PKG_DIR}/${APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PKG_DIR}/tolvane.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 48 128 256)
  install(FILES ${PKG_DIR}/tolvane-${size}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
          RENAME tolvane.png)
endforeach()

# The manual page, from the program's own help and the command-line guide.
set(MANPAGE ${CMAKE_BINARY_DIR}/tolvane.1)
add_custom_command(
  OUTPUT ${MANPAGE}.gz
  COMMAND sh ${PKG_DIR}/make-manpage.sh $<TARGET_FILE:tolvane> ${CMAKE_SOURCE_DIR}/docs/CLI.md
          ${PROJECT_VERSION} ${MANPAGE}
  COMMAND gzip -9nf ${MANPAGE}
  DEPENDS tolvane ${PKG_DIR}/make-manpage.sh ${CMAKE_SOURCE_DIR}/docs/CLI.md
  VERBATIM)
set(CHANGELOG ${CMAKE_BINARY_DIR}/changelog.gz)
add_custom_command(
  OUTPUT ${CHANGELOG}
  COMMAND gzip -9nc ${PKG_DIR}/changelog > ${CHANGELOG}
  DEPENDS ${PKG_DIR}/changelog)
add_custom_target(package_files ALL DEPENDS ${MANPAGE}.gz ${CHANGELOG})
install(FILES ${MANPAGE}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(DOC_DEST ${CMAKE_INSTALL_DATADIR}/doc/tolvane)
install(FILES ${PKG_DIR}/copyright ${CHANGELOG} DESTINATION ${DOC_DEST})
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION ${DOC_DEST})
file(GLOB USER_DOCS ${CMAKE_SOURCE_DIR}/docs/*.md)
install(FILES ${USER_DOCS} DESTINATION ${DOC_DEST})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "Tolvane maintainers <maintainers@users.noreply.c-seed-a38ea914.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "municipal collection counter")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "Desktop cashier for a municipal collection counter: reads the barcodes of\n"
       "municipal guides and bank slips, refuses duplicates, charges interest on\n"
       "overdue guides, records each payment, stamps the documents on an\n"
       "authenticating printer and keeps the cash day.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries the program links are found by dpkg-shlibdeps. Qt's database drivers are plugins the
# program loads by name, which no linker sees: SQLite is the default database, PostgreSQL optional.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libqt6sql6-psql")
# No maintainer scripts: installing or removing the package never touches a data folder.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)

# A Debian package: cpack -G DEB in the folder of a release build, or packaging/build-deb.sh.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kalibrierung-wendral)
set(CPACK_PACKAGE_VENDOR "Kalibrierung nach Wendral")
# The program names no person or address, so the package's maintainer has neither.
set(CPACK_PACKAGE_CONTACT "Kalibrierung nach Wendral")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Kalibrierung indirekter Prüfmerkmale der Bodenverdichtung")
set(CPACK_PACKAGE_DESCRIPTION
  "Kalibriert ein indirektes Prüfmerkmal, das eine Verdichtungswalze
flächendeckend misst, an einem direkten Prüfmerkmal wie dem
Verdichtungsgrad oder dem Verformungsmodul, nach dem Regelwerk Wendral,
Ausgabe 2003.
.
Ein Assistent nimmt Merkmale, Prüffelder und Messwerte auf, zeigt
Kenngrößen, Kalibriergeraden und Urteil und gibt Protokoll, XML-Datei und
Tabellenkalkulation aus. Das Programm kalibrierung-auswertung wertet
Dateien ohne Fenster aus.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library tells: Qt's German texts; the serif font of the protocol, with its measures; a font for
# windows (Qt is content with any one, and then shows them in Liberation Mono); and the plug-in that
# draws the preview's SVG icons.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n, fonts-liberation, fonts-dejavu-core, libqt6svg6")
# What F1 opens the help with: xdg-open asks the desktop for a browser for its pages.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, kchmviewer | xchm | www-browser")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/ordnerrechte.cmake")
include(CPack)

# Installs the console as a desktop program, each part in its standard place
# under the prefix, and describes its Debian package (cpack -G DEB, see
# scripts/package-deb). The installed program needs nothing from the source
# tree: it finds the sample image through the system's data folders.
include(GNUInstallDirs)

set(VANTREL_PACKAGING ${PROJECT_SOURCE_DIR}/packaging)
set(VANTREL_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/vantrel-test)

install(TARGETS vantrel-test RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${VANTREL_PACKAGING}/vantrel-test.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${VANTREL_PACKAGING}/vantrel-test.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${VANTREL_PACKAGING}/vantrel-test-48.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/48x48/apps RENAME vantrel-test.png)

# The manual page and the changelog compressed as Debian wants them: the
# most, and without a time stamp, so that two builds give the same bytes.
foreach(source vantrel-test.1 changelog)
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${source}.gz
    COMMAND gzip -9n -c ${VANTREL_PACKAGING}/${source} > ${PROJECT_BINARY_DIR}/${source}.gz
    DEPENDS ${VANTREL_PACKAGING}/${source}
    VERBATIM)
endforeach()
add_custom_target(vantrel_compressed_docs ALL
  DEPENDS ${PROJECT_BINARY_DIR}/vantrel-test.1.gz ${PROJECT_BINARY_DIR}/changelog.gz)
install(FILES ${PROJECT_BINARY_DIR}/vantrel-test.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_BINARY_DIR}/changelog.gz ${VANTREL_PACKAGING}/copyright DESTINATION ${VANTREL_DOC_DIR})

install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${VANTREL_DOC_DIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${VANTREL_DOC_DIR}/docs)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${VANTREL_DOC_DIR}/examples
        FILES_MATCHING PATTERN "*.vts" PATTERN "*.mask")
# Where the program looks for drive C: when the user's own lacks the file.
install(FILES ${PROJECT_SOURCE_DIR}/examples/FP_blk.hex
        DESTINATION "${CMAKE_INSTALL_DATADIR}/vantrel-test/c/Projects/Vantrel/VantrelTest Utility")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantrel-test)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Vantrel test console developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "hand-driven test console for the Vantrel.Application server")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES TRUE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Vantrel test console developers <vantrel-test@example.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGE_DESCRIPTION "A technician's bench tool for the forecourt controller server
Vantrel.Application: one button per server command, and for every click the
exact text that went out and the exact answer that came back. A built-in
simulator of the server stands in where the server itself is not installed.
Script mode drives the real windows headless and writes a trace of every call.")
# The libraries come from what the program links; Qt's platform plugins are
# loaded at run time, so they are named outright.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, fonts-dejavu-extra")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
include(CPack)

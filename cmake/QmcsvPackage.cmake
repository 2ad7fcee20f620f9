# The release a Quillmate user installs (win64 build only):
#
#   cmake --build --preset win64 --target package
#
# makes build/win64/qmcsv-<version>-win64.zip with qmcsv.dll, qmhost.exe, the
# user guide, the examples, LICENSE, THIRD-PARTY-NOTICES, CHANGELOG.md and
# SHA256SUMS, all in one folder of the package's name. CPack's ZIP generator
# writes the archive through CMake's own libarchive: no zip program is needed.
# Only the install component "release" goes in, so nothing a third-party
# source tree would install (PCRE2's headers and tools) reaches the package.
set(QMCSV_PACKAGE_NAME "qmcsv-${PROJECT_VERSION}-win64")

install(TARGETS qmcsv qmhost RUNTIME DESTINATION . COMPONENT release)
install(FILES LICENSE THIRD-PARTY-NOTICES CHANGELOG.md DESTINATION . COMPONENT release)
install(DIRECTORY docs/guide/ DESTINATION guide COMPONENT release)
# The examples with their expected transcripts; not what a local run wrote.
install(DIRECTORY examples/ DESTINATION examples COMPONENT release PATTERN out EXCLUDE)
# Last: the checksums of everything above.
install(SCRIPT cmake/WriteSha256Sums.cmake COMPONENT release)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME qmcsv)
set(CPACK_PACKAGE_VENDOR "qmcsv developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "CSV Data plug-in for Quillmate")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_FILE_NAME "${QMCSV_PACKAGE_NAME}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};qmcsv;release;/")
set(CPACK_PACKAGE_CHECKSUM SHA256)
# The programs go without their debug sections (the static runtimes bring some).
set(CPACK_STRIP_FILES ON)
include(CPack)

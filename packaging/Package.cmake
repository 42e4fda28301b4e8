# `cpack` in the build folder, or `script/package`, makes a Debian package.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zell-transfer)
set(CPACK_PACKAGE_VENDOR "The Zell Transfer contributors")
set(CPACK_PACKAGE_CONTACT "The Zell Transfer contributors <support@zell.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Get your media back from a portable player or phone")
set(CPACK_PACKAGE_DESCRIPTION
"Shows the music, movies, TV shows, podcasts, audiobooks, ringtones, books,
playlists, voice memos, camera roll and photo albums of a player or phone,
and copies what is chosen into tidy folders. Nothing is ever written to the
device, and a report says of every item whether it arrived whole.
Comes with a program for the terminal, zell-transfer-cli.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)

# The programs are stripped, and what was taken from them is a package beside them, for debuggers.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# What the programs are linked to; the rest is loaded or run by name, and nobody sees it.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Without `file` the desktop's opener does not know sound when it sees it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6svg6, xdg-utils, shared-mime-info, file | libfile-mimeinfo-perl")
# What the guide names: the service that phones are reached through, the music application.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "usbmuxd, rhythmbox")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)

# The .deb, made by cpack in a build folder.

set(VEXILO_MAINTAINER "Morrowick <vexilo@morrowick.example>" CACHE STRING
    "Who answers for the package: a name and a mail address")

# Qt finds QML modules by name while it runs, which no link tells. These are all that the views
# import, and what those import.
set(qmlModules qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qml6-module-qtquick qml6-module-qtquick-layouts qml6-module-qtquick-templates)
# Each of these is missed only where it is used: the certificates of servers, the icon theme's folders,
# the keyring, the pointers of the desktop's theme on X11, Wayland, links and e-mail, and the desktop's
# wishes, file dialogs and printing.
set(recommended ca-certificates hicolor-icon-theme libsecret-1-0 libxcursor1 qt6-wayland xdg-utils xdg-desktop-portal
    "default-dbus-session-bus | dbus-session-bus")
# A keyring, the tool that puts a password into it, accounts, and a phone to share with.
set(suggested gnome-keyring libsecret-tools gnome-online-accounts kdeconnect)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexilo)
set(CPACK_PACKAGE_VENDOR Morrowick)
set(CPACK_PACKAGE_CONTACT ${VEXILO_MAINTAINER})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Permissions.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${VEXILO_WEBSITE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "restaurant bill splitter for the table")
set(CPACK_PACKAGE_DESCRIPTION
    "Type the amount of the bill, set the people and how good the service was:
the total, the tip and the share of each person are shown at every key
stroke, in the currency and notation of the locale.
.
The summary can be copied, sent, printed or shown as a QR code. Bills can
be saved and found again, also on other devices through WebDAV storage of
the user's own.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
list(JOIN qmlModules ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
list(JOIN recommended ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
list(JOIN suggested ", " CPACK_DEBIAN_PACKAGE_SUGGESTS)
include(CPack)

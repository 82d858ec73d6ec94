# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package: `cpack -G DEB` in the build folder. The Qt libraries it needs are found by
# dpkg-shlibdeps from what the executables link, so the dependencies follow the Qt actually used.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ft1000cat)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "ft1000cat developers")
set(CPACK_PACKAGE_CONTACT ${FT_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "control program for the Yaesu FT-1000MP and Mark-V transceivers")
# One paragraph in lines of the control file's width.
set(CPACK_PACKAGE_DESCRIPTION [[Controls a Yaesu FT-1000MP or FT-1000MP Mark-V HF transceiver over its CAT
serial port: shows both VFOs, modes, clarifiers, meters and status by polling
the radio, and stands in for its front-panel keys. Adds a band scope, a
memory-channel manager with .ymp files and upload, EDSP and IF-filter control,
a frequency navigator and a rigctld-compatible network server. A virtual radio
(ft1000-sim) is included, so the program can be tried without a transceiver.]])
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES TRUE)  # the package carries no debugging information
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${FT_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${FT_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)

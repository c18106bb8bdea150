# `cpack -G DEB` in a build tree makes the Debian package of everything `cmake --install` installs,
# under /usr: the service, its manual page, the libraries, their headers and the CMake and
# pkg-config files. macOS ships the same layout in a signed installer package (see the README).
set(CPACK_PACKAGE_NAME screenweaver)
set(CPACK_PACKAGE_VENDOR Screenweaver)
set(CPACK_PACKAGE_CONTACT "Screenweaver developers <developers@screenweaver.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Screenweaver's display service and the libraries it shares")
set(CPACK_PACKAGE_DESCRIPTION
    "screenweaverd, the service that creates, verifies, keeps and releases virtual displays, and the
static libraries it shares with Screenweaver's other programs: CoreTypes (the data model and its
JSON forms), DisplayKit (arrangements of live displays) and VirtualDisplayKit (virtual displays),
with their headers, CMake package and pkg-config files.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Neither the service nor the libraries carry debugging information.
set(CPACK_STRIP_FILES ON)
set(CPACK_SCREENWEAVER_STRIP "${CMAKE_STRIP}")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/StripPackagedLibraries.cmake")

# What the service loads is read from the executable by dpkg-shlibdeps. What the headers include
# and the static libraries link with is declared here, one package a line.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(SCREENWEAVER_DEBIAN_DEPENDS
  libfmt-dev       # text formatting
  libsimdjson-dev  # the JSON parser of CoreTypesJSON
  libboost1.81-dev  # the model's sorted collections (header-only)
  uuid-dev         # UUIDs
  libsystemd-dev   # the system journal
  libxcb1-dev      # the X backend: XCB,
  libxcb-randr0-dev  # its RandR binding
  libxcb-dpms0-dev   # and its DPMS binding
  pkg-config       # the CMake package finds the C libraries above through it
)
list(JOIN SCREENWEAVER_DEBIAN_DEPENDS ", " CPACK_DEBIAN_PACKAGE_DEPENDS)

include(CPack)

# What `cmake --install` puts where: the service and its manual page; the libraries, their headers
# and the CMake and pkg-config files that let other projects find them. The test support (the
# simulated window server) is never installed.
include(CMakePackageConfigHelpers)

# On macOS the service is a privileged helper started by launchd from the job's property list;
# elsewhere it goes to sbin.
set(SCREENWEAVER_DAEMON_INSTALL_DIR "/Library/PrivilegedHelperTools")
set(SCREENWEAVER_LAUNCHD_PLIST "${PROJECT_SOURCE_DIR}/Resources/org.screenweaver.daemon.plist")

if(APPLE AND BUILD_SHARED_LIBS)
  # A privileged helper loads nothing but the system's libraries; it is installed from a static build.
  message(STATUS "Shared libraries: the privileged helper and its launchd job are not installed")
elseif(APPLE)
  install(TARGETS screenweaverd RUNTIME DESTINATION "${SCREENWEAVER_DAEMON_INSTALL_DIR}")
  install(FILES "${SCREENWEAVER_LAUNCHD_PLIST}" DESTINATION "/Library/LaunchDaemons")
else()
  install(TARGETS screenweaverd RUNTIME DESTINATION "${CMAKE_INSTALL_SBINDIR}")
endif()
install(FILES "${PROJECT_SOURCE_DIR}/Resources/screenweaverd.8" DESTINATION "${CMAKE_INSTALL_MANDIR}/man8")

# The libraries, with every header of their modules under include/screenweaver/ at the path it has
# under Sources/, so that `#include "CoreTypes/Log.hpp"` reads the same inside and outside.
set(SCREENWEAVER_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/screenweaver")
install(TARGETS ${SCREENWEAVER_LIBRARIES} CoreTypes
  EXPORT ScreenweaverTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  INCLUDES DESTINATION "${SCREENWEAVER_INCLUDE_DIR}")
foreach(module CoreTypes Platform DisplayKit VirtualDisplayKit)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/Sources/${module}" DESTINATION "${SCREENWEAVER_INCLUDE_DIR}"
    FILES_MATCHING PATTERN "*.hpp")
endforeach()

# The CMake package: find_package(Screenweaver 0.1 CONFIG) gives Screenweaver::CoreTypes,
# Screenweaver::DisplayKit, Screenweaver::VirtualDisplayKit (and the libraries they are made of).
set(SCREENWEAVER_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Screenweaver")
install(EXPORT ScreenweaverTargets NAMESPACE Screenweaver:: DESTINATION "${SCREENWEAVER_CMAKE_DIR}")
# Static libraries leave their own C libraries to the program's link, so the package finds them again;
# shared ones only those their headers include (XCB's).
if(BUILD_SHARED_LIBS)
  set(SCREENWEAVER_LINKED_PKG_CONFIG_MODULES ${SCREENWEAVER_PUBLIC_PKG_CONFIG_MODULES})
else()
  set(SCREENWEAVER_LINKED_PKG_CONFIG_MODULES ${SCREENWEAVER_PKG_CONFIG_MODULES})
endif()
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/ScreenweaverConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/ScreenweaverConfig.cmake" INSTALL_DESTINATION "${SCREENWEAVER_CMAKE_DIR}")
# Within one major version, a newer package serves a program written against an older one.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ScreenweaverConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ScreenweaverConfig.cmake" "${PROJECT_BINARY_DIR}/ScreenweaverConfigVersion.cmake"
  DESTINATION "${SCREENWEAVER_CMAKE_DIR}")

# One pkg-config file a library, with the same dependencies as its CMake target. The files find
# their prefix from where they lie (${pcfiledir}), so an installed tree can move.
file(RELATIVE_PATH SCREENWEAVER_PC_PREFIX "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" SCREENWEAVER_PC_PREFIX "${SCREENWEAVER_PC_PREFIX}")
if(SCREENWEAVER_USES_LIBCXX)
  # fmt is used header-only under libc++ (see Dependencies.cmake).
  set(SCREENWEAVER_PC_FMT "")
  set(SCREENWEAVER_PC_CFLAGS "-DFMT_HEADER_ONLY=1")
else()
  set(SCREENWEAVER_PC_FMT "fmt")
  set(SCREENWEAVER_PC_CFLAGS "")
endif()
# Boost's headers come without a pkg-config file: the model's headers include them from where they
# were found, unless that is where the compiler looks anyway.
get_target_property(boost_include_dirs Boost::headers INTERFACE_INCLUDE_DIRECTORIES)
foreach(dir IN LISTS boost_include_dirs)
  if(NOT dir IN_LIST CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
    string(APPEND SCREENWEAVER_PC_CFLAGS " -I${dir}")
  endif()
endforeach()
if(APPLE)
  set(coretypes_system_modules)
  set(platform_frameworks "-framework CoreGraphics -framework CoreFoundation -framework ColorSync -lobjc")
  set(platform_modules)
  set(displaykit_modules)
else()
  set(coretypes_system_modules uuid libsystemd)
  set(platform_frameworks)
  # The X platform's headers include XCB's: public requirements.
  set(platform_modules xcb xcb-randr)
  set(displaykit_modules screenweaver-platform-x11-dpms)
endif()

# screenweaver_pkg_config(<file name> <description> LIBRARY <target> REQUIRES <modules>...
#                         [PRIVATE_REQUIRES <modules>...] [LIBS <flags>...])
# A static library's private dependencies are the program's own, so they are plain requirements
# there and .private ones only beside a shared library.
function(screenweaver_pkg_config name description)
  cmake_parse_arguments(PARSE_ARGV 2 ARG "" "LIBRARY" "REQUIRES;PRIVATE_REQUIRES;LIBS")
  set(pc_libs "")
  if(ARG_LIBRARY)
    get_target_property(output_name ${ARG_LIBRARY} OUTPUT_NAME)
    set(pc_libs "-L\${libdir} -l${output_name}")
  endif()
  list(APPEND pc_libs ${ARG_LIBS})
  if(BUILD_SHARED_LIBS)
    set(pc_requires_private ${ARG_PRIVATE_REQUIRES})
  else()
    list(APPEND ARG_REQUIRES ${ARG_PRIVATE_REQUIRES})
    set(pc_requires_private "")
  endif()
  list(JOIN ARG_REQUIRES " " pc_requires)
  list(JOIN pc_requires_private " " pc_requires_private)
  list(JOIN pc_libs " " pc_libs)
  set(pc_name "${name}")
  set(pc_description "${description}")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/screenweaver.pc.in" "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

screenweaver_pkg_config(screenweaver-coretypes-base
  "Screenweaver's shared data model without its JSON forms: identity, logging, errors, time, interfaces"
  LIBRARY CoreTypesBase REQUIRES ${SCREENWEAVER_PC_FMT} PRIVATE_REQUIRES ${coretypes_system_modules})
screenweaver_pkg_config(screenweaver-coretypes-json "The JSON forms of Screenweaver's data model"
  LIBRARY CoreTypesJSON REQUIRES screenweaver-coretypes-base simdjson)
screenweaver_pkg_config(screenweaver-coretypes "Screenweaver's shared data model and its JSON forms"
  REQUIRES screenweaver-coretypes-base screenweaver-coretypes-json)
screenweaver_pkg_config(screenweaver-platform "The system interfaces Screenweaver's libraries call through"
  LIBRARY Platform REQUIRES screenweaver-coretypes-base ${platform_modules} LIBS ${platform_frameworks})
if(NOT APPLE)
  screenweaver_pkg_config(screenweaver-platform-x11-dpms "The X server's DPMS, for putting displays to sleep"
    LIBRARY PlatformX11DPMS REQUIRES xcb xcb-dpms)
endif()
screenweaver_pkg_config(screenweaver-displaykit "Screenweaver's arrangements of live displays"
  LIBRARY DisplayKit REQUIRES screenweaver-platform screenweaver-coretypes-base ${displaykit_modules})
screenweaver_pkg_config(screenweaver-virtualdisplaykit "Screenweaver's virtual displays"
  LIBRARY VirtualDisplayKit REQUIRES screenweaver-platform screenweaver-coretypes-base)

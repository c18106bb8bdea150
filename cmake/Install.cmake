# On macOS the service is a privileged helper started by launchd from the job's property list;
# elsewhere only the executable (and its manual page) is installed.
include(GNUInstallDirs)
set(SCREENWEAVER_DAEMON_INSTALL_DIR "/Library/PrivilegedHelperTools")
set(SCREENWEAVER_LAUNCHD_PLIST "${PROJECT_SOURCE_DIR}/Resources/org.screenweaver.daemon.plist")

if(APPLE)
  install(TARGETS screenweaverd RUNTIME DESTINATION "${SCREENWEAVER_DAEMON_INSTALL_DIR}")
  install(FILES "${SCREENWEAVER_LAUNCHD_PLIST}" DESTINATION "/Library/LaunchDaemons")
else()
  install(TARGETS screenweaverd RUNTIME DESTINATION "${CMAKE_INSTALL_SBINDIR}")
endif()
install(FILES "${PROJECT_SOURCE_DIR}/Resources/screenweaverd.8" DESTINATION "${CMAKE_INSTALL_MANDIR}/man8")

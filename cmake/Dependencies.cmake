# Every dependency comes from the system's package manager (Debian or Homebrew); nothing is
# downloaded at build time. The README's dependency table says why each one is here.

find_package(fmt REQUIRED)
if(SCREENWEAVER_USES_LIBCXX)
  set(SCREENWEAVER_FMT fmt::fmt-header-only)
else()
  set(SCREENWEAVER_FMT fmt::fmt)
endif()

find_package(simdjson REQUIRED)

if(APPLE)
  # libuuid's C API is part of libSystem on macOS.
  add_library(screenweaver_uuid INTERFACE)
else()
  find_path(UUID_INCLUDE_DIR uuid/uuid.h REQUIRED)
  find_library(UUID_LIBRARY uuid REQUIRED)
  add_library(screenweaver_uuid INTERFACE)
  target_include_directories(screenweaver_uuid SYSTEM INTERFACE ${UUID_INCLUDE_DIR})
  target_link_libraries(screenweaver_uuid INTERFACE ${UUID_LIBRARY})

  find_package(PkgConfig REQUIRED)
  pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET libsystemd)
  # The X backend's way to the display server; DPMS only for putting displays to sleep.
  pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
  pkg_check_modules(XCB_RANDR REQUIRED IMPORTED_TARGET xcb-randr>=1.13)
  pkg_check_modules(XCB_DPMS REQUIRED IMPORTED_TARGET xcb-dpms)
endif()

find_package(Threads REQUIRED)

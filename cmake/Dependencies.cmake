# Every dependency comes from the system's package manager (Debian or Homebrew); nothing is
# downloaded at build time. The README's dependency table says why each one is here.
# The installed package finds the same ones again: cmake/ScreenweaverConfig.cmake.in lists them.

find_package(fmt REQUIRED)
if(SCREENWEAVER_USES_LIBCXX)
  set(SCREENWEAVER_FMT fmt::fmt-header-only)
else()
  set(SCREENWEAVER_FMT fmt::fmt)
endif()

find_package(simdjson REQUIRED)

# The model's sorted collections (Boost.Container's flat maps and sets) are header-only.
find_package(Boost 1.81 REQUIRED)

# The C libraries that only Linux needs (libuuid's C API is part of libSystem on macOS), each found
# by pkg-config as PkgConfig::<module>. The installed package finds the same list again.
# The X backend's modules are also public: the X platform's headers include XCB's. DPMS serves only
# for putting displays to sleep.
set(SCREENWEAVER_PKG_CONFIG_MODULES)
set(SCREENWEAVER_PUBLIC_PKG_CONFIG_MODULES)
if(NOT APPLE)
  set(SCREENWEAVER_PUBLIC_PKG_CONFIG_MODULES xcb xcb-randr xcb-dpms)
  set(SCREENWEAVER_PKG_CONFIG_MODULES uuid libsystemd ${SCREENWEAVER_PUBLIC_PKG_CONFIG_MODULES})
  find_package(PkgConfig REQUIRED)
  foreach(module IN LISTS SCREENWEAVER_PKG_CONFIG_MODULES)
    pkg_check_modules(${module} REQUIRED IMPORTED_TARGET ${module})
  endforeach()
endif()

find_package(Threads REQUIRED)

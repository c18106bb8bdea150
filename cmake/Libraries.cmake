# The libraries other programs build on (the desktop application, swctl): their file names, their
# language level, their ABI version and, when they are built shared, the symbols they export.
set(SCREENWEAVER_LIBRARIES CoreTypesBase CoreTypesJSON Platform DisplayKit VirtualDisplayKit)
if(NOT APPLE)
  # The X platform's DPMS table, which only DisplayKit links.
  list(APPEND SCREENWEAVER_LIBRARIES PlatformX11DPMS)
  set_target_properties(PlatformX11DPMS PROPERTIES OUTPUT_NAME screenweaver-platform-x11-dpms)
endif()

set_target_properties(CoreTypesBase PROPERTIES OUTPUT_NAME screenweaver-coretypes-base)
set_target_properties(CoreTypesJSON PROPERTIES OUTPUT_NAME screenweaver-coretypes-json)
set_target_properties(Platform PROPERTIES OUTPUT_NAME screenweaver-platform)
set_target_properties(DisplayKit PROPERTIES OUTPUT_NAME screenweaver-displaykit)
set_target_properties(VirtualDisplayKit PROPERTIES OUTPUT_NAME screenweaver-virtualdisplaykit)

foreach(library IN LISTS SCREENWEAVER_LIBRARIES)
  # Our headers use C++23 (std::expected above all), so every program that includes them does too.
  target_compile_features(${library} PUBLIC cxx_std_23)
  set_target_properties(${library} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endforeach()

if(BUILD_SHARED_LIBS)
  # Only the public API leaves a shared library. The linker decides, from the patterns in
  # public-symbols.txt, so the headers carry no export annotations: a version script on ELF, an
  # exported-symbols list on Apple.
  file(STRINGS "${PROJECT_SOURCE_DIR}/cmake/public-symbols.txt" lines REGEX "^_Z")
  list(TRANSFORM lines REPLACE "[ \t].*" "")
  list(JOIN lines ";\n    " patterns)
  set(version_script "${PROJECT_BINARY_DIR}/public-symbols.map")
  file(CONFIGURE OUTPUT "${version_script}" CONTENT "{\n  global:\n    ${patterns};\n  local: *;\n};\n" @ONLY)
  list(TRANSFORM lines PREPEND "_")
  list(JOIN lines "\n" patterns)
  set(exported_symbols_list "${PROJECT_BINARY_DIR}/public-symbols.exp")
  file(CONFIGURE OUTPUT "${exported_symbols_list}" CONTENT "${patterns}\n" @ONLY)
  set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/cmake/public-symbols.txt")

  foreach(library IN LISTS SCREENWEAVER_LIBRARIES)
    set_property(TARGET ${library} APPEND PROPERTY LINK_DEPENDS "${version_script}" "${exported_symbols_list}")
    if(APPLE)
      target_link_options(${library} PRIVATE "LINKER:-exported_symbols_list,${exported_symbols_list}")
      # The libraries find each other beside themselves once installed.
      set_target_properties(${library} PROPERTIES INSTALL_RPATH "@loader_path")
    else()
      # --no-undefined: each library names every library it calls into.
      target_link_options(${library} PRIVATE "LINKER:--version-script=${version_script}" "LINKER:--no-undefined")
      set_target_properties(${library} PROPERTIES INSTALL_RPATH "$ORIGIN")
    endif()
  endforeach()
endif()

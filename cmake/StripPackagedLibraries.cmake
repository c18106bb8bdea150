# Run by CPack after it has installed into its staging directory: the packaged static libraries
# lose their debugging information, as Debian's own static libraries do (about 50 MB less).
file(GLOB_RECURSE libraries "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.a")
foreach(library IN LISTS libraries)
  execute_process(COMMAND "${CPACK_SCREENWEAVER_STRIP}" --strip-debug "${library}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

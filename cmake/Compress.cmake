# Run before a package is closed: manuals and changelogs are compressed, as Debian has them.
file(GLOB texts "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*/*.1"
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*/changelog")
foreach(text IN LISTS texts)
  execute_process(COMMAND gzip -9n "${text}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

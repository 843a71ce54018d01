# Run by cpack on the copy of the installed files that goes into the package: man pages and changelogs
# are compressed, without a time in them, and the licence stands in Debian's file for it.
set(tree ${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
set(documents ${tree}/${CPACK_TALUREX_DOCDIR})

file(COPY ${CPACK_TALUREX_DEBIAN_FILES} DESTINATION ${documents})
file(RENAME ${documents}/changelog ${documents}/changelog.Debian)
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(REMOVE ${documents}/LICENSE)

file(GLOB pages ${tree}/${CPACK_TALUREX_MANDIR}/man*/*.[1-9])
execute_process(
  COMMAND gzip -9n ${pages} ${documents}/changelog ${documents}/changelog.Debian
  COMMAND_ERROR_IS_FATAL ANY)

# Run by cpack on the copy of the installed files that goes into the package: man pages and changelogs
# are compressed, without a time in them, and the licence stands in Debian's file for it.
set(tree ${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
set(documents ${tree}/${CPACK_TALUREX_DOCDIR})

# Without it cpack would leave out what the package depends on.
find_program(SHLIBDEPS dpkg-shlibdeps REQUIRED)

file(COPY ${CPACK_TALUREX_DEBIAN_FILES} DESTINATION ${documents}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(RENAME ${documents}/changelog ${documents}/changelog.Debian)
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(REMOVE ${documents}/LICENSE)

file(GLOB pages ${tree}/${CPACK_TALUREX_MANDIR}/man*/*.[1-9])
execute_process(
  COMMAND gzip -9n ${pages} ${documents}/changelog ${documents}/changelog.Debian
  COMMAND_ERROR_IS_FATAL ANY)

# Folders are open to all, whatever the umask of whoever makes the package.
file(CHMOD_RECURSE ${tree} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

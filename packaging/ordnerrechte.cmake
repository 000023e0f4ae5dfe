# Run by cpack before it packs: everybody may enter the folders. They are made with what the umask of the
# builder leaves, while files get their permissions when they are installed.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_DIRECTORY}"
  DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

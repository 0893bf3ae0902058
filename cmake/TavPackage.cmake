# Packages: a pair of them for Debian, an archive that holds all it needs for Windows.

set(CPACK_PACKAGE_VENDOR "The tav developers")
set(CPACK_PACKAGE_CONTACT "The tav developers <tav@localhost>")
# Each package has its own; one for all would stand above them.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# Whatever the mask of who packs.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(MINGW)
    include(TavPackageWindows)
    include(CPack)
elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    include(TavPackageDebian)
    include(CPack)
endif()

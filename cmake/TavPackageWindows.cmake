# One archive, to be unpacked anywhere: libraries, tool and all that they need besides Windows, with the licences.

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME "tav-${PROJECT_VERSION}-windows-x64")
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
# "bundled" is what other people made; an installation into a prefix leaves it out.
set(CPACK_COMPONENTS_ALL runtime development bundled)

# Named one by one, so that a missing file fails here; package/test-zip sees whether the list is whole.
set(tav_compiler_libraries "")
foreach(library IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
    list(APPEND tav_compiler_libraries "${file}")
endforeach()
install(FILES ${tav_compiler_libraries} "$<TARGET_FILE:Qt6::Core>" "$<TARGET_FILE:Qt6::Gui>"
    DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT bundled EXCLUDE_FROM_ALL)
# Beside a program is where Qt looks for them.
install(FILES "${TAV_WINDOWS_LIBRARIES}/plugins/platforms/qwindows.dll"
    "${TAV_WINDOWS_LIBRARIES}/plugins/platforms/qoffscreen.dll"
    DESTINATION "${CMAKE_INSTALL_BINDIR}/platforms" COMPONENT bundled EXCLUDE_FROM_ALL)
# The compiler's libraries come with ten times their size of debug information.
install(CODE "
    file(GLOB libraries \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/lib*-?.dll\")
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded \${libraries} COMMAND_ERROR_IS_FATAL ANY)"
    COMPONENT bundled EXCLUDE_FROM_ALL)

install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME tav DESTINATION licences COMPONENT bundled EXCLUDE_FROM_ALL)
install(DIRECTORY "${TAV_WINDOWS_LIBRARIES}/licences/" DESTINATION licences COMPONENT bundled EXCLUDE_FROM_ALL)

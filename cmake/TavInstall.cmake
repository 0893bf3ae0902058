# Installation: libraries, headers, the tool, the examples, find_package(tav) and pkg-config. In two components, for
# packages: "runtime" is what a program needs to run, "development" all else.

include(CMakePackageConfigHelpers)
set(tav_config_folder "${CMAKE_INSTALL_LIBDIR}/cmake/tav")
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

function(tav_install_library target export)
    install(TARGETS ${target} EXPORT ${export}
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

# What needs no Qt headers and what does are exported apart: a plug-in finds tav without Qt.
tav_install_library(tav tavTargets)
tav_install_library(pel_1_2 tavTargets)
install(EXPORT tavTargets NAMESPACE tav:: DESTINATION "${tav_config_folder}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/tav" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/pel_1_2/include/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING PATTERN "*.h")

tav_install_library(tavkit tavKitTargets)
install(EXPORT tavKitTargets NAMESPACE tav:: DESTINATION "${tav_config_folder}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/kit/include/tav" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING PATTERN "*.h")

# The tool's target bears another name than the library; both are called tav where they are installed.
install(TARGETS tav_tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/tavConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/tavConfig.cmake"
    INSTALL_DESTINATION "${tav_config_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/tavConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/tavConfig.cmake" "${PROJECT_BINARY_DIR}/tavConfigVersion.cmake"
    DESTINATION "${tav_config_folder}")

# The prefix is found from the place of the file, so that an installed tree can be moved.
file(RELATIVE_PATH tav_prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" tav_prefix_from_pc "${tav_prefix_from_pc}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/tav.pc.in" "${PROJECT_BINARY_DIR}/tav.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/tav.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Sources, graphs, a library and scripts of edits; built where they lie they are a project of their own.
set(tav_doc_folder "${CMAKE_INSTALL_DOCDIR}")
if(WIN32)
    # Nobody else's files are there.
    set(tav_doc_folder "${CMAKE_INSTALL_DATAROOTDIR}")
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${tav_doc_folder}")
install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${tav_doc_folder}")

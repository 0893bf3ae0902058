# The pair: libtav1, which programs need to run, and libtav-dev, which building them needs, with the tool.

set(tav_library_package "libtav${PROJECT_VERSION_MAJOR}")
set(tav_graph_text "A node graph with ports, connections, nested compounds and annotations, whose owner
is asked before and told after every change, saved as text and read again.")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The tool's own libraries belong to no package yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# A program built with one version runs with all later ones of the same soname.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${tav_library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "node-graph core, shared libraries\n${tav_graph_text}

This package holds the libraries that programs need to run.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtav-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${tav_library_package} (= ${PROJECT_VERSION})")
# The kit's targets and the headers that speak of Qt need Qt's; a plug-in does without. Graphviz lays graphs out.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS qt6-base-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS graphviz)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "node-graph core, development files and tool\n${tav_graph_text}

This package holds the headers, what CMake and pkg-config want to know, the command-line
tool and examples.")

# Only with its component: an installation of the whole into another prefix is no such package.
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright EXCLUDE_FROM_ALL
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${tav_library_package}" COMPONENT runtime)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright EXCLUDE_FROM_ALL
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/libtav-dev" COMPONENT development)

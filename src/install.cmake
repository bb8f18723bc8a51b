# What a program that uses the library needs: the library, its headers, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# Headers that read declarations are installed with these laid out and explained, as an editor shows them.
add_executable(quill1xml-headers automation/headers/main.cpp)
target_include_directories(quill1xml-headers PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(quill1xml-headers PRIVATE quill1xml project_options)
file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/quill1xml/*.hpp)
set(header_root ${CMAKE_CURRENT_BINARY_DIR}/headers)
foreach(header IN LISTS headers)
    add_custom_command(OUTPUT ${header_root}/${header}
        COMMAND quill1xml-headers ${PROJECT_SOURCE_DIR}/include/${header} ${header_root}/${header}
        DEPENDS ${PROJECT_SOURCE_DIR}/include/${header} quill1xml-headers)
    list(APPEND installed_headers ${header_root}/${header})
endforeach()
file(MAKE_DIRECTORY ${header_root}/quill1xml)
add_custom_target(headers ALL DEPENDS ${installed_headers})

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quill1xml)
install(TARGETS quill1xml EXPORT quill1xml COMPONENT development INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT quill1xml NAMESPACE quill1xml:: FILE quill1xml-targets.cmake DESTINATION ${package_folder}
    COMPONENT development)
install(FILES ${installed_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quill1xml COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/quill1xml-config.cmake.in quill1xml-config.cmake
    INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(quill1xml-config-version.cmake COMPATIBILITY SameMajorVersion)
# From where the file lies, so that a tree of it may be moved.
file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_prefix ${pc_prefix})
configure_file(${PROJECT_SOURCE_DIR}/cmake/quill1xml.pc.in quill1xml.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quill1xml-config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/quill1xml-config-version.cmake DESTINATION ${package_folder} COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quill1xml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)

include(CMakePackageConfigHelpers)

install(TARGETS QuorISDBT QuorLogger-2.0 EXPORT QuorISDBTTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quor-isdbt)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuorISDBT)
install(EXPORT QuorISDBTTargets NAMESPACE QuorISDBT:: DESTINATION ${package_dir})
configure_package_config_file(cmake/QuorISDBTConfig.cmake.in QuorISDBTConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(QuorISDBTConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuorISDBTConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QuorISDBTConfigVersion.cmake
        DESTINATION ${package_dir})

# Parts that can be installed apart (cmake --install --component): library, development, logger, logger-development,
# carousel, carousel-development, tool, python. A receiver that has the platform's own logger leaves both parts of the
# stand-in out.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuorISDBT)

set(libraries QuorISDBT)
set(loggers QuorLogger-2.0)
if(BUILD_SHARED_LIBS)
  list(APPEND libraries QuorISDBT-static)
  list(APPEND loggers QuorLogger-2.0-static)
endif()

install(TARGETS ${libraries} QuorISDBT-constants EXPORT QuorISDBTTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(EXPORT QuorISDBTTargets NAMESPACE QuorISDBT:: DESTINATION ${package_dir} COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quor-isdbt COMPONENT development)

configure_package_config_file(cmake/QuorISDBTConfig.cmake.in QuorISDBTConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(QuorISDBTConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuorISDBTConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QuorISDBTConfigVersion.cmake
              cmake/PlatformLogger.cmake
        DESTINATION ${package_dir} COMPONENT development)

# Paths from where the file lies, so that the installed tree can be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig ${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig ${prefix_from_pkgconfig})
file(RELATIVE_PATH libdir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH includedir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
if(BUILD_SHARED_LIBS)
  set(libs_private "Libs.private: -lQuorLogger-2.0")
else()
  set(libs " -lQuorLogger-2.0")
endif()
configure_file(cmake/quor-isdbt.pc.in quor-isdbt.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quor-isdbt.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

if(QUOR_ISDBT_LOGGER STREQUAL "stand-in")
  install(TARGETS ${loggers} EXPORT QuorLoggerTargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT logger
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT logger-development)
  install(EXPORT QuorLoggerTargets NAMESPACE QuorISDBT:: DESTINATION ${package_dir} COMPONENT logger-development)
  install(FILES logger/QuorLogger.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quor-isdbt COMPONENT logger-development)
endif()

if(TARGET QuorCarousel)
  set(carousel_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuorCarousel)
  set(carousels QuorCarousel)
  if(BUILD_SHARED_LIBS)
    list(APPEND carousels QuorCarousel-static)
    set(carousel_libs_private "Libs.private: -lz")
  else()
    set(carousel_libs " -lz")
  endif()
  install(TARGETS ${carousels} EXPORT QuorCarouselTargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT carousel NAMELINK_COMPONENT carousel-development
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT carousel-development)
  install(EXPORT QuorCarouselTargets NAMESPACE QuorCarousel:: DESTINATION ${carousel_package_dir}
          COMPONENT carousel-development)
  install(DIRECTORY carousel/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quor-carousel
          COMPONENT carousel-development)
  configure_package_config_file(cmake/QuorCarouselConfig.cmake.in QuorCarouselConfig.cmake
                                INSTALL_DESTINATION ${carousel_package_dir})
  write_basic_package_version_file(QuorCarouselConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuorCarouselConfig.cmake
                ${CMAKE_CURRENT_BINARY_DIR}/QuorCarouselConfigVersion.cmake
          DESTINATION ${carousel_package_dir} COMPONENT carousel-development)
  configure_file(cmake/quor-carousel.pc.in quor-carousel.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quor-carousel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          COMPONENT carousel-development)
endif()

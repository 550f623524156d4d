# Debian packages, one for each part that can be installed apart. packaging/build makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quor-isdbt)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_VENDOR "QuorISDBT developers")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development logger logger-development tool)
if(TARGET QuorCarousel)
  list(APPEND CPACK_COMPONENTS_ALL carousel carousel-development)
endif()
if(TARGET quor_isdbt_module)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/stage.cmake)

set(CPACK_QUOR_ISDBT_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_QUOR_ISDBT_CONTROL ${PROJECT_BINARY_DIR}/control)
set(CPACK_QUOR_ISDBT_STRIP ${CMAKE_STRIP})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE quor-isdbt)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "QuorISDBT developers <developers@quor-isdbt.example>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/carousel
    ${PROJECT_BINARY_DIR}/logger)

set(soname_version ${PROJECT_VERSION_MAJOR})
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# quor_package(part name section summary description-line...)
function(quor_package part name section summary)
  string(TOUPPER ${part} PART)
  string(JOIN "\n" text ${summary} ${ARGN})
  set(CPACK_DEBIAN_${PART}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${PART}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${PART}_DESCRIPTION "${text}" PARENT_SCOPE)
endfunction()

quor_package(library libquorisdbt${soname_version} libs
  "section parser for ISDB-T receivers (shared library)"
  "QuorISDBT turns complete MPEG-2 sections of an ISDB-T transport stream, in the"
  "profile of the Ginga middleware, into trees of typed objects.")
quor_package(development libquorisdbt-dev libdevel
  "section parser for ISDB-T receivers (development files)"
  "QuorISDBT turns complete MPEG-2 sections of an ISDB-T transport stream, in the"
  "profile of the Ginga middleware, into trees of typed objects."
  "."
  "This package has the headers, the static library, and the files for CMake and"
  "pkg-config.")
quor_package(logger libquorlogger-2.0 libs
  "stand-in for the logging library of ISDB-T receivers"
  "QuorISDBT writes its diagnostics by libQuorLogger-2.0 of the receiver's"
  "platform. Where there is no such platform, this library writes them to standard"
  "error.")
quor_package(logger-development libquorlogger-2.0-dev libdevel
  "stand-in for the logging library of ISDB-T receivers (development files)"
  "QuorISDBT writes its diagnostics by libQuorLogger-2.0 of the receiver's"
  "platform. Where there is no such platform, this library writes them to standard"
  "error."
  "."
  "This package has the header and the static library.")
quor_package(carousel libquorcarousel${soname_version} libs
  "files of broadcast carousels for ISDB-T receivers (shared library)"
  "QuorCarousel turns the DSM-CC sections of data and object carousels into"
  "modules, directories and files, and says what is missing.")
quor_package(carousel-development libquorcarousel-dev libdevel
  "files of broadcast carousels for ISDB-T receivers (development files)"
  "QuorCarousel turns the DSM-CC sections of data and object carousels into"
  "modules, directories and files, and says what is missing."
  "."
  "This package has the headers, the static library, and the files for CMake and"
  "pkg-config.")
quor_package(tool isdbt-inspect utils
  "show the tables of an ISDB-T transport stream"
  "Reads a recorded transport stream and shows the PSI/SI and AIT sections that it"
  "carries as trees, with what a receiver would reject in them and why.")
quor_package(python python3-quor-isdbt python
  "sections of ISDB-T streams as Python objects"
  "Reads the sections that an ISDB-T transport stream carries into typed objects,"
  "and gives all that isdbt-inspect finds in a stream, item by item.")

# A module is for one version of Python.
if(TARGET quor_isdbt_module)
  find_package(Python REQUIRED COMPONENTS Interpreter)
  math(EXPR next_python "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${next_python})")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libquorisdbt${soname_version} (= ${package_version}), libquorlogger-2.0-dev")
set(CPACK_DEBIAN_LOGGER-DEVELOPMENT_PACKAGE_DEPENDS "libquorlogger-2.0")
set(CPACK_DEBIAN_CAROUSEL-DEVELOPMENT_PACKAGE_DEPENDS
    "libquorcarousel${soname_version} (= ${package_version}), zlib1g-dev")
# What other packages depend on when they link the libraries. The logger's soname has no version of its own: any
# package that provides the name will do, the platform's as well.
set(library_shlibs "libQuorISDBT ${soname_version} libquorisdbt${soname_version} \
(>= ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})\n")
set(carousel_shlibs "libQuorCarousel ${soname_version} libquorcarousel${soname_version} \
(>= ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})\n")
set(logger_shlibs "libQuorLogger 2.0 libquorlogger-2.0\n")
file(WRITE ${CPACK_QUOR_ISDBT_CONTROL}/library/shlibs "${library_shlibs}")
file(WRITE ${CPACK_QUOR_ISDBT_CONTROL}/logger/shlibs "${logger_shlibs}")
file(WRITE ${CPACK_QUOR_ISDBT_CONTROL}/carousel/shlibs "${carousel_shlibs}")
file(WRITE ${CPACK_QUOR_ISDBT_CONTROL}/shlibs.local "${library_shlibs}${carousel_shlibs}${logger_shlibs}")
foreach(part IN ITEMS library carousel logger)
  string(TOUPPER ${part} PART)
  file(WRITE ${CPACK_QUOR_ISDBT_CONTROL}/${part}/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_${PART}_PACKAGE_CONTROL_EXTRA ${CPACK_QUOR_ISDBT_CONTROL}/${part}/shlibs ${CPACK_QUOR_ISDBT_CONTROL}/${part}/triggers)
endforeach()

include(CPack)

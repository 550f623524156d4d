# Makes Debian packages of the staged parts: their documents, compressed as the policy asks, and what dpkg-shlibdeps
# has to know of the libraries in the other packages.
file(READ ${CPACK_QUOR_ISDBT_SOURCE}/CHANGELOG.md changelog)
if(NOT changelog MATCHES "\n## \\[([0-9.]+)\\] - ([0-9-]+)\n" OR NOT CMAKE_MATCH_1 STREQUAL CPACK_PACKAGE_VERSION)
  message(FATAL_ERROR "The newest entry of CHANGELOG.md is not ${CPACK_PACKAGE_VERSION}")
endif()
execute_process(COMMAND date --utc --rfc-email --date=${CMAKE_MATCH_2} OUTPUT_VARIABLE date
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

foreach(part IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${part} PART)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${part})
  set(documents ${root}/usr/share/doc/${CPACK_DEBIAN_${PART}_PACKAGE_NAME})
  configure_file(${CPACK_QUOR_ISDBT_SOURCE}/packaging/copyright ${documents}/copyright COPYONLY)
  configure_file(${CPACK_QUOR_ISDBT_SOURCE}/CHANGELOG.md ${documents}/changelog COPYONLY)
  configure_file(${CPACK_QUOR_ISDBT_SOURCE}/packaging/changelog.Debian.in ${documents}/changelog.Debian)
  configure_file(${CPACK_QUOR_ISDBT_SOURCE}/packaging/lintian-overrides/${part}
                 ${root}/usr/share/lintian/overrides/${CPACK_DEBIAN_${PART}_PACKAGE_NAME} COPYONLY)

  file(GLOB plain ${documents}/changelog* ${root}/usr/share/man/*/*)
  execute_process(COMMAND gzip -9 --no-name ${plain} COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB_RECURSE archives ${root}/usr/lib/*.a)
  if(part MATCHES "library|tool|python")
    configure_file(${CPACK_QUOR_ISDBT_CONTROL}/shlibs.local ${root}/debian/shlibs.local COPYONLY)
  endif()
  if(archives)
    execute_process(COMMAND ${CPACK_QUOR_ISDBT_STRIP} --strip-debug --remove-section=.comment
                            --enable-deterministic-archives ${archives} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()

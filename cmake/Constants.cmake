# Programs in C++11 and C++14 that bind a constant of a public class to a reference need its definition; C++17 does
# not. The definitions stand in an archive of their own, so that a receiver's flash does not hold their names.

# quor_write_constants(SOURCE): writes a source with the definitions of all constants in the public headers.
function(quor_write_constants source)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/include/*.h)
  set(includes "")
  set(definitions "")
  foreach(header IN LISTS headers)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/${header})
    file(STRINGS ${PROJECT_SOURCE_DIR}/include/${header} lines REGEX "class QUOR_ISDBT_API|    static constexpr")
    foreach(line IN LISTS lines)
      if(line MATCHES "class QUOR_ISDBT_API ([A-Za-z0-9_]+)")
        set(class ${CMAKE_MATCH_1})
      elseif(line MATCHES "static constexpr ([A-Z0-9_]+) ([A-Za-z0-9_]+) = ")
        string(APPEND definitions "constexpr ${CMAKE_MATCH_1} ${class}::${CMAKE_MATCH_2};\n")
      endif()
    endforeach()
    string(APPEND includes "#include \"${header}\"\n")
  endforeach()
  file(CONFIGURE OUTPUT ${source} CONTENT "${includes}\nnamespace Quor {\n\n${definitions}\n} // namespace Quor\n" @ONLY)
endfunction()

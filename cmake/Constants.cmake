# Programs in C++11 and C++14 that bind a constant of a public class to a reference need its definition; C++17 does
# not. The definitions stand in an archive of their own, so that a receiver's flash does not hold their names.

# quor_write_constants(SOURCE): writes a source with the definitions of all constants in the public headers.
function(quor_write_constants source)
  file(STRINGS ${PROJECT_BINARY_DIR}/public-headers.tsv lines REGEX "\tconstant\t")
  foreach(line IN LISTS lines)
    string(REGEX MATCH "^(.*)\t(.*)\tconstant\t(.*)\t(.*)\t" line "${line}")
    list(APPEND includes "#include \"${CMAKE_MATCH_1}\"\n")
    string(APPEND definitions "constexpr ${CMAKE_MATCH_3} ${CMAKE_MATCH_2}::${CMAKE_MATCH_4};\n")
  endforeach()
  list(REMOVE_DUPLICATES includes)
  list(JOIN includes "" includes)
  file(CONFIGURE OUTPUT ${source} CONTENT "${includes}\nnamespace Quor {\n\n${definitions}\n} // namespace Quor\n" @ONLY)
endfunction()

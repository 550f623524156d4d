# The names of numbers, as code and as a page. They stand in a file, a line each, with tabs between:
#
#   kind  from  to  name  standard
#
# says what the numbers from one to another, in hexadecimal, stand for, and where they are assigned. The lines of a kind
# are together, in ascending order.

# quor_write_names(NAMES HEADER SOURCE PAGE): writes a header with a list for each kind, its source, and a page of all of
# them behind what stands in the file of the same name that ends with .md.
function(quor_write_names names header source page)
  string(REGEX REPLACE "[.]tsv$" ".md" head ${names})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${names} ${head})
  file(STRINGS ${names} lines ENCODING UTF-8 REGEX "\t0x")
  file(READ ${head} text)
  set(kind "")
  set(declarations "")
  set(definitions "")
  set(lists "")
  set(end "")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([a-z0-9_.]+)\t(0x[0-9A-F]+)\t(0x[0-9A-F]+)\t([^\t\"\\]+)\t([^\t]+)$")
      message(FATAL_ERROR "${names} has a line that is not like the others: ${line}")
    endif()
    if(NOT CMAKE_MATCH_1 STREQUAL kind)
      set(kind ${CMAKE_MATCH_1})
      string(MAKE_C_IDENTIFIER "${kind}" list)
      string(TOUPPER ${list} list)
      string(APPEND declarations "extern const NameList ${list};\n")
      string(APPEND lists "const NameList ${list}(${list}_ROWS);\n")
      string(APPEND definitions "${end}constexpr Name ${list}_ROWS[] = {\n")
      string(APPEND text "\n## ${kind}\n\n| Number | Name | Standard |\n| --- | --- | --- |\n")
      set(end "};\n\n")
    endif()
    string(APPEND definitions "    {${CMAKE_MATCH_2}, ${CMAKE_MATCH_3}, \"${CMAKE_MATCH_4}\"},\n")
    set(numbers "${CMAKE_MATCH_2}")
    if(NOT CMAKE_MATCH_2 STREQUAL CMAKE_MATCH_3)
      string(APPEND numbers " to ${CMAKE_MATCH_3}")
    endif()
    string(APPEND text "| ${numbers} | ${CMAKE_MATCH_4} | ${CMAKE_MATCH_5} |\n")
  endforeach()
  file(CONFIGURE OUTPUT ${header} @ONLY CONTENT "#pragma once

#include \"naming/NameList.h\"

namespace inspect::names {

${declarations}
} // namespace inspect::names
")
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT "#include \"naming/Names.h\"

namespace inspect::names {

namespace {

${definitions}};

} // namespace

${lists}
} // namespace inspect::names
")
  file(CONFIGURE OUTPUT ${page} @ONLY CONTENT "${text}")
endfunction()

# quor_numbers_of(NAMES KIND VARIABLE): the numbers of a kind that have a name, with blanks between.
function(quor_numbers_of names kind variable)
  file(STRINGS ${names} lines ENCODING UTF-8 REGEX "^${kind}\t")
  set(numbers "")
  foreach(line IN LISTS lines)
    string(REGEX MATCH "\t(0x[0-9A-F]+)\t(0x[0-9A-F]+)\t" found "${line}")
    set(number ${CMAKE_MATCH_1})
    while(NOT number GREATER CMAKE_MATCH_2)
      math(EXPR next "${number} + 1")
      math(EXPR number "${number} + 0x10000" OUTPUT_FORMAT HEXADECIMAL) # so that it has all of its four digits
      string(SUBSTRING ${number} 3 4 digits)
      string(TOUPPER ${digits} digits)
      list(APPEND numbers 0x${digits})
      set(number ${next})
    endwhile()
  endforeach()
  string(JOIN " " numbers ${numbers})
  set(${variable} "${numbers}" PARENT_SCOPE)
endfunction()

# quor_words_in(SOURCE REGEX VARIABLE): the words that stand in the only parentheses of an expression wherever it matches,
# with blanks between.
function(quor_words_in source regex variable)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  string(REPLACE ";" " " text "${text}")
  string(REGEX MATCHALL "${regex}" found "${text}")
  set(words "")
  foreach(each IN LISTS found)
    string(REGEX REPLACE "${regex}" "\\1" word "${each}")
    list(APPEND words ${word})
  endforeach()
  string(JOIN " " words ${words})
  set(${variable} "${words}" PARENT_SCOPE)
endfunction()

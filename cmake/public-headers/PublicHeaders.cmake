# What the public headers declare: the exported classes and their public members, a line each, with tabs between
#
#   header  class  kind         type        name  text
#           ...    class        its base          what its comment says
#           ...    enum         its type          its names with their values
#           ...    constant     its type          its value
#           ...    constructor                    its parameters
#           ...    static       its result        its parameters
#           ...    method       its result        its parameters
#           ...    const        its result        its parameters; a method that changes nothing
#
# A configured build has the lines in public-headers.tsv; without one, cmake -P cmake/public-headers/PublicHeaders.cmake FILE writes
# them. A declaration that is none of these is an error, so that none is missed.

function(quor_list_public_headers result)
  set(folder ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../include)
  set(name "([A-Za-z0-9_]+)")
  set(lines "")
  file(GLOB_RECURSE headers RELATIVE ${folder} ${folder}/*.h)
  foreach(header IN LISTS headers)
    file(READ ${folder}/${header} text)
    while(text MATCHES "(class|struct) QUOR_ISDBT_API")
      if(NOT text MATCHES "((///[^\n]*\n)*)(class|struct) QUOR_ISDBT_API ${name}( : public ${name})? {\n *public:(.*)")
        message(FATAL_ERROR "${header} has a class that does not begin as the others do")
      endif()
      set(class ${CMAKE_MATCH_4})
      set(base "${CMAKE_MATCH_6}")
      set(text "${CMAKE_MATCH_7}")
      string(REGEX REPLACE "(///|[ \n])+" " " comment "${CMAKE_MATCH_1}")
      string(STRIP "${comment}" comment)
      string(APPEND lines "${header}\t${class}\tclass\t${base}\t${class}\t${comment}\n")

      string(REGEX REPLACE "//[^\n]*" "" members "${text}")
      foreach(end "\n};" "\nprivate:" "\nprotected:")
        string(FIND "${members}" "${end}" at)
        string(SUBSTRING "${members}" 0 ${at} members)
      endforeach()
      while(members MATCHES "enum ${name} : ${name} {([^{}]*)}")
        set(line "${header}\t${class}\tenum\t${CMAKE_MATCH_2}\t${CMAKE_MATCH_1}")
        string(REPLACE "${CMAKE_MATCH_0}" "" members "${members}")
        string(REGEX REPLACE "[ \n]+" " " values "${CMAKE_MATCH_3}")
        string(STRIP "${values}" values)
        string(APPEND lines "${line}\t${values}\n")
      endwhile()
      # What a function does is no member of its own.
      while(members MATCHES "{")
        string(REGEX REPLACE " ?{[^{}]*}" ";" members "${members}")
      endwhile()
      string(REGEX REPLACE "[ \n]+" " " members "${members}")
      foreach(member IN LISTS members)
        string(STRIP "${member}" member)
        if(member MATCHES "^(virtual |)~|^using |[ *]operator | = delete$|^$")
          continue()
        elseif(member MATCHES "^static constexpr (.+) ${name} = (.+)$")
          set(line "constant\t${CMAKE_MATCH_1}\t${CMAKE_MATCH_2}\t${CMAKE_MATCH_3}")
        elseif(member MATCHES "^(explicit |)${class}\\(([^()]*)\\)( = default| :.*|)$")
          set(line "constructor\t\t${class}\t${CMAKE_MATCH_2}")
        elseif(member MATCHES "^static (.+[ *&])${name}\\(([^()]*)\\)$")
          set(line "static\t${CMAKE_MATCH_1}\t${CMAKE_MATCH_2}\t${CMAKE_MATCH_3}")
        elseif(member MATCHES "^(virtual |)(.+[ *&])${name}\\(([^()]*)\\)( const|)( override| = 0|)$")
          set(kind method)
          if(CMAKE_MATCH_5)
            set(kind const)
          endif()
          set(line "${kind}\t${CMAKE_MATCH_2}\t${CMAKE_MATCH_3}\t${CMAKE_MATCH_4}")
        else()
          message(FATAL_ERROR "${header} declares what nobody understands: ${member}")
        endif()
        string(REPLACE " \t" "\t" line "${line}")
        string(APPEND lines "${header}\t${class}\t${line}\n")
      endforeach()
    endwhile()
  endforeach()
  set(${result} "${lines}" PARENT_SCOPE)
endfunction()

quor_list_public_headers(lines)
if(CMAKE_SCRIPT_MODE_FILE)
  file(WRITE ${CMAKE_ARGV3} "${lines}")
else()
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/public-headers.tsv CONTENT "${lines}" @ONLY)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../../include/*.h)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
endif()

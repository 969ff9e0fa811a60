# Public headers of a library, each of which compiles alone.
#
#   zo_public_headers(<target> [ALL_IN <header>])
#
# They are all below include/ in the target's folder; one whose name ends in "_" is a part of another. The x86 build
# compiles each by itself, so that a user may include any of them first. ALL_IN names the one that includes the family
# headers, each of which includes its own: all others must be among them.
function(zo_public_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "ALL_IN" "")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/include include/*.h)
  list(FILTER headers EXCLUDE REGEX "_\\.h$")
  if(arg_ALL_IN)
    zo_included_headers(families ${arg_ALL_IN})
    zo_included_headers(members ${families})
    set(lost ${headers})
    list(REMOVE_ITEM lost ${arg_ALL_IN} ${families} ${members})
    if(lost)
      message(FATAL_ERROR "no family header that ${arg_ALL_IN} includes takes: ${lost}")
    endif()
  endif()

  list(TRANSFORM headers PREPEND include/)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS include FILES ${headers})
  if(ZO_ARCH STREQUAL "x86")
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    add_custom_target(${target}_headers ALL)
    add_dependencies(${target}_headers ${target}_verify_interface_header_sets)
  endif()
endfunction()

# Sets <out> to what the headers include of the library. A change of one of them configures anew.
function(zo_included_headers out)
  set(included)
  foreach(header ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/include/${header})
    file(STRINGS include/${header} lines REGEX "^#include <.*/")
    list(TRANSFORM lines REPLACE "#include <(.*)>.*" "\\1")
    list(APPEND included ${lines})
  endforeach()
  set(${out} ${included} PARENT_SCOPE)
endfunction()

# Public headers of a library, each of which compiles alone.
#
#   zo_public_headers(<target> [ALL_IN <header>])
#
# They are all below include/ in the target's folder; one whose name ends in "_" is a part of another. The x86 build
# compiles each by itself, so that a user may include any of them first. ALL_IN names the one that includes all others.
function(zo_public_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "ALL_IN" "")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/include include/*.h)
  if(arg_ALL_IN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/include/${arg_ALL_IN})
    file(READ include/${arg_ALL_IN} text)
    foreach(header ${headers})
      string(FIND "${text}" "#include <${header}>" place)
      if(place EQUAL -1 AND NOT header STREQUAL arg_ALL_IN)
        message(FATAL_ERROR "${arg_ALL_IN} does not include ${header}")
      endif()
    endforeach()
  endif()

  list(FILTER headers EXCLUDE REGEX "_\\.h$")
  list(TRANSFORM headers PREPEND include/)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS include FILES ${headers})
  if(ZO_ARCH STREQUAL "x86")
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    add_custom_target(${target}_headers ALL)
    add_dependencies(${target}_headers ${target}_verify_interface_header_sets)
  endif()
endfunction()

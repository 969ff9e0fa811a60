# Examples of the documentation, to be compiled.
#
#   zo_documented_examples(<out> <page>)
#
# Writes each ```cpp block of the page into a source of its own in the build, and sets <out> to these sources. A block
# is whole and begins with an #include; or it is left out, and begins with "// Part of", for the reader to see.
function(zo_documented_examples out page)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})
  get_filename_component(name ${page} NAME_WE)
  file(READ ${page} text)
  set(sources)
  while(text MATCHES "\n```cpp\n([^`]*)```\n(.*)")
    set(block "${CMAKE_MATCH_1}")
    set(text "\n${CMAKE_MATCH_2}")
    if(block MATCHES "^#include")
      list(LENGTH sources number)
      file(CONFIGURE OUTPUT ${name}_example_${number}.cpp CONTENT "${block}" @ONLY)
      list(APPEND sources ${CMAKE_CURRENT_BINARY_DIR}/${name}_example_${number}.cpp)
    elseif(NOT block MATCHES "^// Part of")
      message(FATAL_ERROR "${page}: an example is neither whole nor marked as a part:\n${block}")
    endif()
  endwhile()
  if(text MATCHES "\n *``` *(cpp|c\\+\\+)[^\n]*")
    message(FATAL_ERROR "${page}: an example cannot be read: a backtick in it, or not just ```cpp before it")
  endif()
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

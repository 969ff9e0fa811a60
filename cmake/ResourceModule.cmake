# A library of resources alone: no run-time library, no entry point, no code. It is only ever loaded by name, so it is a
# module, without an import library.
#
#   zo_add_resource_module(<target> <resource script>)

function(zo_add_resource_module target script)
  add_library(${target} MODULE ${script})
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE C PREFIX "" SUFFIX ".DLL" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/zogbl/include)
  target_link_options(${target} PRIVATE -nostdlib -Wl,--entry=0)
endfunction()

# Gives every module of the suite the version record its settings are derived from.
#
#   zo_add_version_resource(<target> "<file description>" "<internal name>")
#
# Company, product and version are the same for all modules: together they name the suite's registry tree, so a module
# that differed in one of them would not see the others' settings. The version itself stands in the project() call.

function(zo_add_version_resource target description internal_name)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(ZO_RC_FILETYPE VFT_APP)
    set(ZO_RC_EXTENSION ".exe")
  else()
    set(ZO_RC_FILETYPE VFT_DLL)
    set(ZO_RC_EXTENSION ".DLL")
  endif()
  set(ZO_RC_DESCRIPTION "${description}")
  set(ZO_RC_INTERNAL_NAME "${internal_name}")
  set(ZO_RC_ORIGINAL_FILENAME "${target}${ZO_RC_EXTENSION}")
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${output} @ONLY)
  target_sources(${target} PRIVATE ${output})
endfunction()

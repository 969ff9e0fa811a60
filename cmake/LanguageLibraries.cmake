# Language libraries: resources only, one library a module and language. To add a language: a file of settings
# (language/settings), a file of texts for each module, and a name in the list below.

set(ZO_LANGUAGES DEU ENU ESP FRA JPN) # the system's abbreviations

find_program(ZO_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED) # the interpreter that has the picture library
set(ZO_CLDR_DIR /usr/share/unicode/cldr/common/main CACHE PATH "CLDR language files (package unicode-cldr-core)")

set(ZO_LANGUAGE_DIR ${PROJECT_SOURCE_DIR}/language)
set(ZO_LIBRARY_IDS ${PROJECT_SOURCE_DIR}/zogbl/include/zogbl/resource_ids.h)
set(ZO_RUN_GENERATOR ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${ZO_PYTHON} ${ZO_LANGUAGE_DIR}/generate.py)
file(GLOB ZO_GENERATOR_SOURCES CONFIGURE_DEPENDS ${ZO_LANGUAGE_DIR}/generate.py ${ZO_LANGUAGE_DIR}/tools/*.py)

# zo_add_language_libraries(<module> "<file description>" "<internal name>" IDS <header> TEXTS <folder> STRINGS <file>
#                           [SKELETONS <file>...] [BESIDE <header>...] [COUNTRIES <file> TABLES <file>...])
#
# Makes the language libraries of a module that is a target of that name, or will be one. A library's name is the first
# five letters of the module's and the abbreviation that Windows has for the language: that is how it is found.
#   description, name  those of the module: a language library's settings are those of the module it belongs to
#   TEXTS              folder with a file for each language; all others repeat the placeholders of the English texts
#   STRINGS, SKELETONS the plain strings; the dialogs and menus
#   BESIDE             headers of other modules of the same process, whose numbers may not occur here; that of the
#                      class library is one of them by itself
#   COUNTRIES, TABLES  the country table, whose names are to be strings, and the generated files that go with it
function(zo_add_language_libraries module description internal_name)
  cmake_parse_arguments(PARSE_ARGV 3 arg "" "IDS;TEXTS;STRINGS;COUNTRIES" "SKELETONS;BESIDE;TABLES")
  foreach(argument IDS TEXTS STRINGS COUNTRIES SKELETONS BESIDE TABLES)
    list(TRANSFORM arg_${argument} PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
  endforeach()
  if(NOT module MATCHES "^.....")
    message(FATAL_ERROR "${module}: the name of a module with language libraries has at least five letters")
  endif()
  string(SUBSTRING ${module} 0 5 prefix)
  string(TOUPPER ${prefix} prefix)

  set(inputs --ids ${arg_IDS} --reference ${arg_TEXTS}/enu.txt --strings ${arg_STRINGS})
  if(NOT arg_IDS STREQUAL ZO_LIBRARY_IDS)
    list(PREPEND arg_BESIDE ${ZO_LIBRARY_IDS})
  endif()
  foreach(header ${arg_BESIDE})
    list(APPEND inputs --beside ${header})
  endforeach()
  foreach(skeleton ${arg_SKELETONS})
    list(APPEND inputs --skeleton ${skeleton})
  endforeach()
  if(arg_COUNTRIES)
    list(APPEND inputs --countries ${arg_COUNTRIES} --cldr ${ZO_CLDR_DIR})
  endif()

  foreach(abbreviation ${ZO_LANGUAGES})
    set(target ${prefix}${abbreviation})
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    string(TOLOWER ${abbreviation} language)
    set(settings ${ZO_LANGUAGE_DIR}/settings/${language}.txt)
    set(texts ${arg_TEXTS}/${language}.txt)
    add_custom_command(
      OUTPUT ${script}
      COMMAND ${ZO_RUN_GENERATOR} language ${inputs} --settings ${settings} --texts ${texts} --output ${script}
      DEPENDS ${ZO_GENERATOR_SOURCES} ${settings} ${texts} ${arg_TEXTS}/enu.txt ${arg_IDS} ${arg_BESIDE} ${arg_STRINGS}
              ${arg_SKELETONS} ${arg_COUNTRIES}
      COMMENT "Writing the resource script of ${target}"
      VERBATIM)
    zo_add_resource_module(${target} ${script})
    set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS "${arg_TABLES};${arg_IDS}")
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    zo_add_version_resource(${target} "${description}" "${internal_name}")
    if(TARGET ${module})
      add_dependencies(${module} ${target})
    endif()
  endforeach()
endfunction()

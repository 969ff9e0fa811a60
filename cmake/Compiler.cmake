# One place for compiler settings: every target of the tree is built alike.

add_compile_definitions(NOMINMAX WINVER=0x0501 _WIN32_WINNT=0x0501 _WIN32_IE=0x0500 STRICT)
add_compile_options(
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wall> $<$<COMPILE_LANGUAGE:C,CXX>:-Wextra>
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wpedantic>)

option(ZO_WARNINGS_AS_ERRORS "Let a warning end the build" ON)
if(ZO_WARNINGS_AS_ERRORS)
  add_compile_options($<$<COMPILE_LANGUAGE:C,CXX>:-Werror>)
endif()

# Address-space layout randomisation and no-execute pages, whatever the linker's default is.
add_link_options(-Wl,--dynamicbase -Wl,--nxcompat)

# Resource scripts are UTF-8.
set(CMAKE_RC_FLAGS "-c 65001")

find_program(ZO_CCACHE ccache)
if(ZO_CCACHE)
  set(launcher ${PROJECT_SOURCE_DIR}/cmake/compile ${ZO_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

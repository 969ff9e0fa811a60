# Test programs, run in several environments.
#
#   zo_add_tests(<area> SOURCES <file>... [LIBRARIES <target>...] [ENVIRONMENTS <environment>...] [GUARD_HEAP])
#
# Makes the program <area>_tests and one test for each environment: frame.x86.win98 is area "frame" on the simulated
# Windows 98, 32 bits. Environments are a family of Windows, with "-932" behind it on a Japanese system, and "-dpi144"
# where a screen has so many dots an inch instead of 96; without ENVIRONMENTS those of ZO_TEST_ENVIRONMENTS. GUARD_HEAP
# adds a run on the guard heap (tests/support/guard_heap.h).
#
# The family goes by the name of the program (cmake/wine.sh), so there is a link to it for each.

set(ZO_TEST_ENVIRONMENTS win10 nt40 win98 win31 win10-932)
set(ZO_TEST_TIMEOUT 1800)    # seconds a program; for a run that hangs in a way that its own watchdog cannot end
set(ZO_WATCHDOG_TIMEOUT 120) # seconds without progress; says which test hangs
set(ZO_RUN_WINDOWS ${PROJECT_SOURCE_DIR}/cmake/run-windows)

function(zo_add_test_run name environment program)
  string(REGEX REPLACE "-.*" "" family ${environment})
  set(prefix ${environment})
  if("--guard-heap" IN_LIST ARGN)
    set(prefix ${environment}-guard-heap)
  endif()
  add_test(NAME ${name}
    COMMAND ${ZO_RUN_WINDOWS} ${CMAKE_BINARY_DIR} ${ZO_ARCH} ${prefix}
            ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${program}_${family}.exe --environment=${ZO_ARCH}.${environment}
            --watchdog=${ZO_WATCHDOG_TIMEOUT} --gtest_brief=1 ${ARGN})
  # Programs of one prefix run in a row, the rows side by side. That of Windows 10 is the longest, since the long loops
  # of faults run there and nowhere else; one that began last would be waited for.
  set(cost 0)
  if(prefix MATCHES "^win10(-guard-heap)?$")
    set(cost 1000)
  endif()
  set_tests_properties(${name} PROPERTIES
    COST ${cost}
    LABELS "${ZO_ARCH};${environment}"
    TIMEOUT ${ZO_TEST_TIMEOUT}
    # Programs of one prefix share registry, named objects and desktop: one at a time.
    RESOURCE_LOCK "wine-${ZO_ARCH}-${prefix}")
endfunction()

function(zo_add_tests area)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GUARD_HEAP" "" "SOURCES;LIBRARIES;ENVIRONMENTS")
  if(NOT arg_ENVIRONMENTS)
    set(arg_ENVIRONMENTS ${ZO_TEST_ENVIRONMENTS})
  endif()
  set(program ${area}_tests)
  add_executable(${program} ${arg_SOURCES})
  target_link_libraries(${program} PRIVATE zotest_support ${arg_LIBRARIES})
  target_precompile_headers(${program} REUSE_FROM zotest_support)

  set(links)
  foreach(environment ${arg_ENVIRONMENTS})
    string(REGEX REPLACE "-.*" "" family ${environment})
    list(APPEND links ${family})
    zo_add_test_run(${area}.${ZO_ARCH}.${environment} ${environment} ${program})
  endforeach()
  if(arg_GUARD_HEAP)
    list(APPEND links win10)
    zo_add_test_run(${area}.${ZO_ARCH}.win10-guard-heap win10 ${program} --guard-heap)
  endif()
  list(REMOVE_DUPLICATES links)
  foreach(family ${links})
    add_custom_command(TARGET ${program} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E create_hardlink $<TARGET_FILE:${program}>
              $<TARGET_FILE_DIR:${program}>/${program}_${family}.exe
      VERBATIM)
  endforeach()
endfunction()

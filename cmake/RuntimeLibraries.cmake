# Puts the compiler's run-time libraries beside the programs. They are shared ones, so that exceptions can cross from
# one module into another, and the programs are to run where the compiler is not installed.

function(zo_copy_runtime_library)
  foreach(name ${ARGN})
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
      OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(IS_ABSOLUTE "${found}") # otherwise the compiler answers with the bare name
      file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
      file(COPY_FILE ${found} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name} ONLY_IF_DIFFERENT)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has none of its run-time libraries ${ARGN}")
endfunction()

zo_copy_runtime_library(libstdc++-6.dll)
zo_copy_runtime_library(libgcc_s_dw2-1.dll libgcc_s_seh-1.dll) # named after the way it unwinds
zo_copy_runtime_library(libwinpthread-1.dll)

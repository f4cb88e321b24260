# The C++ runtime is linked shared, because exceptions cross from marnock.dll into assistant.dll; its DLLs go beside
# the programs.
if(MINGW AND CMAKE_CROSSCOMPILING)
  file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    if(NOT EXISTS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
      execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE runtime OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
      execute_process(COMMAND ${CMAKE_STRIP} -o ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name} ${runtime}
        COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endforeach()
endif()

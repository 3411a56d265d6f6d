# On Windows the library and its users share one C++ runtime, so that exceptions and type
# information cross the border between them: its DLLs are copied beside the programs.
if(WIN32)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  if(MINGW)
    foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
      execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${dll}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
      if(NOT EXISTS "${path}")
        find_file(TLVN_RUNTIME_${dll} ${dll} PATHS ${CMAKE_FIND_ROOT_PATH} PATH_SUFFIXES lib bin
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
        set(path "${TLVN_RUNTIME_${dll}}")
      endif()
      file(COPY "${path}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
      install(FILES "${path}" DESTINATION bin)
    endforeach()
  endif()
endif()

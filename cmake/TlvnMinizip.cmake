# tlvn_minizip: the reading half of minizip, from the system or from its sources.
#
# Where no package of it is installed, as for MinGW, its sources are looked for in
# TLVN_MINIZIP_DIR; if they are not there, Debian's source package is fetched into that folder.
if(MINGW)
  # The static one: the library is to come without a zlib DLL beside it.
  find_library(ZLIB_LIBRARY NAMES libz.a)
endif()
find_package(ZLIB REQUIRED)

find_path(MINIZIP_INCLUDE_DIR minizip/unzip.h)
find_library(MINIZIP_LIBRARY minizip)
mark_as_advanced(MINIZIP_INCLUDE_DIR MINIZIP_LIBRARY)
if(MINIZIP_INCLUDE_DIR AND MINIZIP_LIBRARY)
  add_library(tlvn_minizip INTERFACE)
  target_include_directories(tlvn_minizip SYSTEM INTERFACE "${MINIZIP_INCLUDE_DIR}")
  target_link_libraries(tlvn_minizip INTERFACE "${MINIZIP_LIBRARY}" ZLIB::ZLIB)
  return()
endif()

set(TLVN_MINIZIP_DIR "${PROJECT_BINARY_DIR}/minizip" CACHE PATH "Sources of minizip")
if(NOT EXISTS "${TLVN_MINIZIP_DIR}/unzip.c")
  message(STATUS "Fetching the sources of minizip")
  execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/fetch-minizip.sh" "${TLVN_MINIZIP_DIR}"
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "No minizip: neither installed, nor its sources in TLVN_MINIZIP_DIR")
  endif()
endif()
# Included as <minizip/unzip.h>, as from a package.
file(COPY "${TLVN_MINIZIP_DIR}/unzip.h" "${TLVN_MINIZIP_DIR}/ioapi.h"
  DESTINATION "${PROJECT_BINARY_DIR}/minizip-include/minizip")
add_library(tlvn_minizip STATIC "${TLVN_MINIZIP_DIR}/unzip.c" "${TLVN_MINIZIP_DIR}/ioapi.c")
target_include_directories(tlvn_minizip SYSTEM PUBLIC "${PROJECT_BINARY_DIR}/minizip-include")
target_link_libraries(tlvn_minizip PUBLIC ZLIB::ZLIB)

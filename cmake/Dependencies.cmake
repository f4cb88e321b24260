# What Marnock is built from. A package manager's copy (vcpkg on Windows, see vcpkg.json) is used where there is one;
# otherwise tools/fetch-deps.sh unpacks Debian's packages into MARNOCK_DEPS, for both targets alike.
set(MARNOCK_DEPS "${CMAKE_SOURCE_DIR}/build/deps" CACHE PATH "Where tools/fetch-deps.sh unpacks the libraries")

# A packaged SQLite must be built with the first one too.
set(MARNOCK_SQLITE_OPTIONS
  SQLITE_DEFAULT_SYNCHRONOUS=3   # what persistence/DatabaseCopy.cpp adds for the saves themselves: docs/durability.md
  SQLITE_DEFAULT_MEMSTATUS=0
  SQLITE_OMIT_LOAD_EXTENSION
  SQLITE_DQS=0
  SQLITE_TEMP_STORE=3            # a client's statement opens no file, not even a temporary one (docs/security.md)
  SQLITE_TRUSTED_SCHEMA=0        # what a loaded file defines may not call functions that have effects
  HAVE_USLEEP=1)                 # else a busy time-out below a second does not wait at all on POSIX

find_package(Threads REQUIRED)
find_package(SQLiteCpp CONFIG QUIET)

if(SQLiteCpp_FOUND)
  find_path(MARNOCK_HEADERS asio.hpp REQUIRED)
else()
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/fetch-deps.sh ${MARNOCK_DEPS} COMMAND_ERROR_IS_FATAL ANY)
  set(MARNOCK_HEADERS ${MARNOCK_DEPS}/sysroot/usr/include)
  foreach(option SQLITECPP_RUN_CPPLINT SQLITECPP_RUN_CPPCHECK SQLITECPP_INCLUDE_SCRIPT INSTALL_GTEST BUILD_GMOCK)
    set(${option} OFF CACHE BOOL "" FORCE)
  endforeach()
  set(CMAKE_POLICY_DEFAULT_CMP0063 NEW)  # SQLiteCpp asks for an older CMake, which would ignore the visibility presets
  add_subdirectory(${MARNOCK_DEPS}/src/SQLiteCpp-3.2.1 sqlitecpp EXCLUDE_FROM_ALL SYSTEM)
  unset(CMAKE_POLICY_DEFAULT_CMP0063)
  target_compile_definitions(sqlite3 PRIVATE ${MARNOCK_SQLITE_OPTIONS})
  target_compile_definitions(SQLiteCpp PRIVATE SQLITE_OMIT_LOAD_EXTENSION)
  target_compile_options(sqlite3 PRIVATE -w)
  target_compile_options(SQLiteCpp PRIVATE -w)
endif()

add_library(marnock_headers INTERFACE)
target_include_directories(marnock_headers SYSTEM INTERFACE ${MARNOCK_HEADERS})
target_compile_definitions(marnock_headers INTERFACE
  ASIO_STANDALONE ASIO_NO_DEPRECATED SPDLOG_HEADER_ONLY FMT_HEADER_ONLY)
target_link_libraries(marnock_headers INTERFACE Threads::Threads)
if(WIN32)
  target_compile_definitions(marnock_headers INTERFACE
    _WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
  target_link_libraries(marnock_headers INTERFACE ws2_32 mswsock)
endif()

if(MARNOCK_BUILD_TESTS)
  # The sources rather than a built library: the same tests run on both targets and under every sanitizer.
  if(EXISTS /usr/src/googletest/CMakeLists.txt)
    add_subdirectory(/usr/src/googletest googletest EXCLUDE_FROM_ALL SYSTEM)
  else()
    find_package(GTest CONFIG REQUIRED)
  endif()
endif()

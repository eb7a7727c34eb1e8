# SQLite::SQLite3: the system's library, or one built here from the one big source that tools/sqlite-source makes.
option(ZONTARA_SQLITE_STATIC "Build SQLite from its source and link it in, instead of using the system's library" OFF)
set(ZONTARA_SQLITE "${PROJECT_SOURCE_DIR}/build/sqlite" CACHE PATH "Folder with sqlite3.c and sqlite3.h")

if(NOT ZONTARA_SQLITE_STATIC)
  if(ZONTARA_STATIC_PROGRAM)
    find_library(ZONTARA_SQLITE_ARCHIVE libsqlite3.a REQUIRED)
    set(SQLite3_LIBRARY ${ZONTARA_SQLITE_ARCHIVE})
  endif()
  find_package(SQLite3 REQUIRED)
  return()
endif()

enable_language(C)
find_package(Threads REQUIRED)
add_library(sqlite STATIC ${ZONTARA_SQLITE}/sqlite3.c)
add_library(SQLite::SQLite3 ALIAS sqlite)
target_include_directories(sqlite SYSTEM PUBLIC ${ZONTARA_SQLITE})
target_link_libraries(sqlite PRIVATE Threads::Threads)
# The compiler's warnings are for the project's own code.
target_compile_options(sqlite PRIVATE -w)
# Without it SQLite takes a system for one that can't sleep for less than a second. Another system's would be wrong.
if(NOT CMAKE_CROSSCOMPILING)
  target_compile_definitions(sqlite PRIVATE _HAVE_SQLITE_CONFIG_H)
endif()
# What a statement may say and what it means, as in Debian's library.
target_compile_definitions(sqlite PRIVATE
  SQLITE_ENABLE_DBSTAT_VTAB
  SQLITE_ENABLE_MATH_FUNCTIONS
  SQLITE_ENABLE_STMTVTAB
  SQLITE_ENABLE_UPDATE_DELETE_LIMIT
  SQLITE_LIKE_DOESNT_MATCH_BLOBS
  SQLITE_MAX_VARIABLE_NUMBER=250000
  SQLITE_SOUNDEX)
# What nobody asks for here and costs time or room. Connections of several threads stay apart; one connection is used by
# one thread at a time.
target_compile_definitions(sqlite PRIVATE
  SQLITE_DEFAULT_MEMSTATUS=0
  SQLITE_OMIT_DEPRECATED
  SQLITE_OMIT_SHARED_CACHE
  SQLITE_THREADSAFE=2
  SQLITE_USE_ALLOCA)
# SQLiteCpp, which the benchmarks compare with, refers to functions that nobody else does.
if(ZONTARA_BENCH)
  target_compile_definitions(sqlite PRIVATE SQLITE_ENABLE_COLUMN_METADATA)
else()
  target_compile_definitions(sqlite PRIVATE SQLITE_OMIT_LOAD_EXTENSION)
endif()

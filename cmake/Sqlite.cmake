# Target `sqlite`: the database engine of the devkit, compiled from the source that `./dev` sets up
# (tools/setup/npm.sh). Without that source there is no such target, and what needs it is left out.
set(V5_SQLITE_DIR "${CMAKE_SOURCE_DIR}/build/downloads/sqlite" CACHE PATH "Folder of sqlite3.c and sqlite3.h")
file(GLOB sqlite_source CONFIGURE_DEPENDS "${V5_SQLITE_DIR}/sqlite3.c")
if(sqlite_source)
  enable_language(C)
  add_library(sqlite STATIC ${sqlite_source})
  target_include_directories(sqlite SYSTEM PUBLIC "${V5_SQLITE_DIR}")
  # The options that SQLite's own "Recommended Compile-time Options" names and that the devkit can live with.
  target_compile_definitions(sqlite PRIVATE
    SQLITE_DQS=0 SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_LIKE_DOESNT_MATCH_BLOBS SQLITE_MAX_EXPR_DEPTH=0
    SQLITE_OMIT_DEPRECATED SQLITE_OMIT_PROGRESS_CALLBACK SQLITE_OMIT_SHARED_CACHE SQLITE_OMIT_LOAD_EXTENSION
    SQLITE_THREADSAFE=2)
  target_compile_options(sqlite PRIVATE -O2 -w)
endif()

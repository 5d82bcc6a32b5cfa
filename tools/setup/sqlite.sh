# SQLite's source for the devkit: one C file and its header, out of a pinned npm package, under build/downloads/sqlite.
# Sourced by ./dev; needs only npm, sha256sum and tar.

sqlite_package=better-sqlite3@12.4.1    # carries SQLite 3.50.4
sqlite_package_sha256=14398acbf00d1e8fe0a2753df7d4f15c13138e4b874f4e6e96791f65b4536d0d

# sqlite_is_set_up ROOT: whether the source is there, from the package above.
sqlite_is_set_up() {
  [ "$(cat "$1/build/downloads/sqlite/package.txt" 2>/dev/null)" = "$sqlite_package_sha256" ]
}

# setup_sqlite ROOT: leaves sqlite3.c and sqlite3.h in ROOT/build/downloads/sqlite. Does nothing when they are there
# from the same package. On failure says why in one sentence and returns 1, with nothing half unpacked.
setup_sqlite() {
  local folder="$1/build/downloads/sqlite" scratch
  sqlite_is_set_up "$1" && return 0
  scratch=$(mktemp -d) || return 1
  if _fetch_sqlite "$scratch"; then
    mkdir -p "$folder" && cp "$scratch"/package/deps/sqlite3/sqlite3.[ch] "$folder" &&
      echo "$sqlite_package_sha256" > "$folder/package.txt" ||
      { echo "SQLite cannot be set up: $folder cannot be written." >&2; rm -rf "$scratch"; return 1; }
    rm -rf "$scratch"
  else
    rm -rf "$scratch"
    return 1
  fi
}

# Downloads, checks and unpacks the package in the empty folder $1.
_fetch_sqlite() {
  (cd "$1" && npm pack "$sqlite_package" --loglevel=error >npm.log 2>&1) || {
    # npm's last words are advice and where its log lies; the reason stands before them.
    echo "SQLite cannot be set up: npm could not download $sqlite_package: $(grep -m 1 -iE 'reason:|failed|not found' \
      "$1/npm.log" || tail -n 1 "$1/npm.log")" >&2
    return 1
  }
  echo "$sqlite_package_sha256  $(echo "$1"/*.tgz)" | sha256sum --check --status ||
    { echo "SQLite cannot be set up: the downloaded $sqlite_package is not the expected file." >&2; return 1; }
  tar -xzf "$1"/*.tgz -C "$1" package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h ||
    { echo "SQLite cannot be set up: $sqlite_package cannot be unpacked." >&2; return 1; }
}

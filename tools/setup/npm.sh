# Files out of pinned npm packages, below build/downloads. Sourced by setup.sh; needs only npm, sha256sum and tar.

# The devkit's database engine: one C file and its header. This package carries SQLite 3.50.4.
need_sqlite() {
  need_npm_files sqlite better-sqlite3@12.4.1 14398acbf00d1e8fe0a2753df7d4f15c13138e4b874f4e6e96791f65b4536d0d \
    deps/sqlite3/sqlite3.c deps/sqlite3/sqlite3.h
}
# The published schemas of bills of materials, for the tests of the packages.
need_cyclonedx() {
  need_npm_files cyclonedx @cyclonedx/cyclonedx-library@10.3.0 9833bd949052eb18218dd64b13ad62d9246f7395eef01c66dad08fcbacf74f01 \
    res/schema/{bom-1.5,spdx,jsf-0.82}.SNAPSHOT.schema.json
}

# need_npm_files NAME PACKAGE SHA256 FILE…: these files in build/downloads/NAME. Does nothing when they are there from the
# same package; on failure says why in one sentence, with nothing half unpacked.
need_npm_files() {
  local folder="$DOWNLOADS/$1" scratch
  [ "$(cat "$folder/package.txt" 2>/dev/null)" != "$3" ] || return 0
  command -v npm >/dev/null || need_packages npm
  say "Fetching $1"
  scratch=$(mktemp -d)
  if ! REASON=$(fetch_npm_files "$scratch" "$2" "$3"); then
    rm -rf "$scratch"
    fail "cannot set up $1: $REASON"
  fi
  rm -rf "$folder"
  mkdir -p "$folder"
  (cd "$scratch/package" && cp "${@:4}" "$folder")
  rm -rf "$scratch"
  echo "$3" >"$folder/package.txt"
}
# fetch_npm_files SCRATCH PACKAGE SHA256: downloads, checks and unpacks into the empty folder; prints why not.
fetch_npm_files() {
  cd "$1"
  # npm's last words are advice and where its log lies; the reason stands before them.
  npm pack "$2" --loglevel=error >npm.log 2>&1 ||
    { echo "npm could not download $2: $(grep -m 1 -iE 'reason:|failed|not found' npm.log || tail -n 1 npm.log)"; return 1; }
  echo "$3  $(echo *.tgz)" | sha256sum --check --status || { echo "the downloaded $2 is not the expected file"; return 1; }
  tar -xzf ./*.tgz 2>npm.log || { echo "$2 cannot be unpacked: $(tail -n 1 npm.log)"; return 1; }
}

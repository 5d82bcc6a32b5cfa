# The 32-bit system: a small Debian with 32-bit Wine below the build folder, in which 32-bit programs run with all that
# they find on a 32-bit Windows, windows, installer and parsers included. It is set up once, and entered as root. Sourced by
# wine.sh.

SYSTEM32="$DOWNLOADS/system32"
SYSTEM32_RELEASE=bookworm  # on whatever system this one is

# need_system32: sets it up. Says in one line why when that cannot be done, and fails.
need_system32() {
  [ "$(id -u)" = 0 ] || { no_system32 "only root can enter the system that they need"; return 1; }
  [ ! -e "$SYSTEM32/ready" ] || return 0
  need_packages debootstrap
  say "Setting up the 32-bit system (some minutes, once)"
  local log="$SYSTEM32.log"
  mkdir -p "$DOWNLOADS"
  make_system32 >"$log" 2>&1 || { no_system32 "$(reason "$log")"; return 1; }
  touch "$SYSTEM32/ready"
}
no_system32() { echo "SKIPPED: running 32-bit programs: $1"; }

make_system32() {
  local source
  rm -rf --one-file-system "$SYSTEM32"
  source=$(debian_source)
  [ -n "$source" ] || { apt-get update -qq; source=$(debian_source); }
  [ -n "$source" ] || { echo "apt knows no source of Debian's packages"; return 1; }
  unshare --mount debootstrap --arch=i386 --variant=minbase "$SYSTEM32_RELEASE" "$SYSTEM32" "$source" || return 1
  cp -r /etc/apt/apt.conf.d/. "$SYSTEM32/etc/apt/apt.conf.d"
  cp /etc/resolv.conf "$SYSTEM32/etc" 2>/dev/null || true
  echo "deb $source $SYSTEM32_RELEASE main" >"$SYSTEM32/etc/apt/sources.list"
  in_system32 apt-get update || true  # one index more or less: the packages decide
  in_system32 env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends wine wine32 libwine \
    fonts-dejavu-core
}
# debian_source: where this machine gets Debian's packages from
debian_source() {
  apt-get indextargets --format '$(REPO_URI)' 'Identifier: Packages' 'Origin: Debian' 'Label: Debian' | head -n 1
}

# in_system32 COMMAND…: runs it there, in the same folder: this checkout has the same path. What is mounted for that
# nobody else sees, and it goes with the command.
in_system32() {
  unshare --mount sh -ec '
    system=$1 project=$2
    shift 2
    mkdir -p "$system$project" "$system/tmp/.X11-unix"
    mount -t proc proc "$system/proc"
    mount --rbind /dev "$system/dev"
    mount --bind "$project" "$system$project"
    [ ! -e /tmp/.X11-unix ] || mount --bind /tmp/.X11-unix "$system/tmp/.X11-unix"
    exec chroot "$system" env -C "$PWD" "$@"
  ' sh "$SYSTEM32" "${BUILD%/build}" "$@"
}

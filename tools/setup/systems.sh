# Small Debian systems below the build folder, set up once and entered as root. Sourced by wine.sh.
#
# In the 32-bit system, with 32-bit Wine, 32-bit programs run with all that they find on a 32-bit Windows: windows, installer
# and parsers included.

SYSTEM32="$DOWNLOADS/system32"
SYSTEM32_RELEASE=bookworm  # on whatever system this one is

# need_system32: sets it up. Says in one line why when that cannot be done, and fails.
need_system32() {
  need_system "$SYSTEM32" i386 "$SYSTEM32_RELEASE" wine wine32 libwine fonts-dejavu-core || {
    echo "SKIPPED: running 32-bit programs: $REASON"
    return 1
  }
}
# in_system32 COMMAND…: runs it there, in the same folder: this checkout has the same path.
in_system32() { in_system "$SYSTEM32" "$PROJECT" "$PROJECT" "$@"; }

# need_system FOLDER ARCHITECTURE RELEASE PACKAGE…: sets one up. Fails with the REASON when that cannot be done.
need_system() {
  local folder=$1 log="$1.log"
  [ "$(id -u)" = 0 ] || { REASON="only root can enter the system that they need"; return 1; }
  [ ! -e "$folder/ready" ] || return 0
  need_packages debootstrap
  say "Setting up a Debian $3 ($2; some minutes, once)"
  mkdir -p "$DOWNLOADS"
  make_system "$@" >"$log" 2>&1 || { REASON=$(reason "$log"); return 1; }
  touch "$folder/ready"
}
make_system() {
  local folder=$1 architecture=$2 release=$3 source
  shift 3
  rm -rf --one-file-system "$folder"
  source=$(debian_source)
  [ -n "$source" ] || { apt-get update -qq; source=$(debian_source); }
  [ -n "$source" ] || { echo "apt knows no source of Debian's packages"; return 1; }
  unshare --mount debootstrap --arch="$architecture" --variant=minbase "$release" "$folder" "$source" || return 1
  cp -r /etc/apt/apt.conf.d/. "$folder/etc/apt/apt.conf.d"
  cp /etc/resolv.conf "$folder/etc" 2>/dev/null || true
  echo "deb $source $release main" >"$folder/etc/apt/sources.list"
  in_system "$folder" / /tmp apt-get update || true  # one index more or less: the packages decide
  in_system "$folder" / /tmp env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}
# debian_source: where this machine gets Debian's packages from
debian_source() {
  apt-get indextargets --format '$(REPO_URI)' 'Identifier: Packages' 'Origin: Debian' 'Label: Debian' | head -n 1
}

# in_system FOLDER SHARED PLACE COMMAND…: runs it in that system, where SHARED stands at PLACE, too; in the same folder as
# here where there is one. What is mounted for that nobody else sees, and it goes with the command.
in_system() {
  unshare --mount sh -ec '
    system=$1 shared=$2 place=$3
    shift 3
    mkdir -p "$system$place" "$system/tmp/.X11-unix"
    mount --rbind "$system" "$system"  # a mount of its own, so that it can have such systems, too
    mount -t proc proc "$system/proc"
    mount --rbind /dev "$system/dev"
    [ "$shared" = / ] || mount --bind "$shared" "$system$place"
    [ ! -e /tmp/.X11-unix ] || mount --bind /tmp/.X11-unix "$system/tmp/.X11-unix"
    [ -d "$system$PWD" ] || cd /
    exec chroot "$system" env -C "$PWD" "$@"
  ' sh "$@"
}

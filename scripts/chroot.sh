# Shared by the scripts that work in chroots, after common.sh.
#
#   SOURCE   what is seen in a chroot as /source, the project by default
#   MIRROR   the mirror that chroots are made from, the one of this machine's apt by default
#   OUT      where steps leave their logs

SOURCE=${SOURCE:-$ROOT}
MIRROR=${MIRROR:-}
AS_ROOT=()
[ "$(id -u)" -eq 0 ] || AS_ROOT=(sudo)

# step NAME COMMAND...: runs it into a log of its name, and ends the script if it fails. What each took
# is gathered in `table`.
table=()
step() {
  local name=$1 began=$SECONDS status=0
  local log=$OUT/${name// /-}.log
  shift
  echo "$name"
  "$@" >"$log" 2>&1 || status=$?
  table+=("$(printf '%-28s %4d s' "$name" $((SECONDS - began)))")
  [ "$status" -ne 0 ] || return 0
  tail -n 25 "$log" >&2
  echo "$(basename "$0"): $name failed, see $log" >&2
  exit "$([ "$name" = "bare chroot" ] && echo 3 || echo 1)"
}

# The first place from which this machine's apt takes Debian itself, not a part of it.
debian_mirror() {
  # shellcheck disable=SC2016
  apt-get indextargets --format '$(ORIGIN) $(LABEL) $(REPO_URI)' 2>/dev/null |
    sed -n 's/^Debian Debian //p' | head -n 1
}

# Names the mirror, unless it is named already.
find_mirror() {
  [ -n "$MIRROR" ] || MIRROR=$(debian_mirror)
  if [ -z "$MIRROR" ]; then
    "${AS_ROOT[@]}" apt-get update -qq || true
    MIRROR=$(debian_mirror)
  fi
}

# bare_chroot RELEASE FOLDER: makes a chroot of the smallest set of packages, unless it is there.
bare_chroot() {
  [ ! -d "$2" ] || return 0
  if [ -z "$MIRROR" ]; then
    echo "This machine's apt sources name no mirror of Debian: see --mirror"
    return 1
  fi
  "${AS_ROOT[@]}" rm -rf --one-file-system "$2.part"
  "${AS_ROOT[@]}" debootstrap --variant=minbase "$1" "$2.part" "$MIRROR" &&
    "${AS_ROOT[@]}" mv "$2.part" "$2"
}

# copy_of_bare RELEASE FOLDER CHROOT: the bare chroot that the folder keeps, with apt's lists of today.
copy_of_bare() {
  bare_chroot "$1" "$2/$1.bare" &&
    "${AS_ROOT[@]}" cp -a --reflink=auto "$2/$1.bare/." "$3" &&
    inside "$3" apt-get update
}

# inside CHROOT COMMAND...: runs a command in a chroot, with the sources at /source, where they can't be
# written. The mounts are seen by the command alone and go with it.
inside() {
  local chroot=$1
  shift
  # shellcheck disable=SC2016
  "${AS_ROOT[@]}" unshare --mount bash -euc '
    chroot=$1 source=$2
    shift 2
    mkdir -p "$chroot/source"
    mount -t proc proc "$chroot/proc"
    mount --bind "$source" "$chroot/source"
    mount -o remount,bind,ro "$chroot/source"
    exec chroot "$chroot" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
      LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"' bash "$chroot" "$SOURCE" "$@"
}

# install_inside CHROOT PACKAGE...: by apt, without what is only recommended.
install_inside() {
  local chroot=$1
  shift
  inside "$chroot" apt-get install -y --no-install-recommends \
    -o Dpkg::Options::=--force-unsafe-io "$@"
}

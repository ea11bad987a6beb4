# Shared by the scripts beside this file: sets up the machine and names the build.
#
#   BUILD_TYPE   CMake build type, Release by default
#   JOBS         parallel jobs, one per processor by default

BUILD_TYPE=${BUILD_TYPE:-Release}
JOBS=${JOBS:-$(nproc)}
ROOT=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
BUILD_DIR=$ROOT/build/${BUILD_TYPE,,}

BUILD_PACKAGES=(g++ cmake ninja-build libopencv-dev)
TEST_PACKAGES=(libgtest-dev libfmt-dev nlohmann-json3-dev gdb)
PYTHON_PACKAGES=(pybind11-dev python3-dev python3-numpy python3-pytest)

# Ends with a sentence that says what is wrong, and what to do about it.
stop() {
  echo "$(basename "$0"): $*" >&2
  exit 1
}

# With --help as its only argument, prints what stands at the head of the script, and ends.
help_if_asked() {
  [ "${1:-}" = --help ] || [ "${1:-}" = -h ] || return 0
  sed -n '2,/^set/{s/^# \{0,1\}//p}' "$0"
  exit 0
}

# Installs those of the named Debian packages that are missing.
install_missing() {
  local package missing=() as_root=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}\n' "$package" 2>/dev/null | grep "ok installed$" >/dev/null ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local line="apt-get install --no-install-recommends ${missing[*]}"
  command -v apt-get >/dev/null ||
    stop "this system has no apt; install what Debian calls ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || stop "packages are missing and there is no sudo; type as root: $line"
    as_root=(sudo)
  fi
  echo "Installing Debian packages: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq && "${as_root[@]}" apt-get install -qq --simulate \
    --no-install-recommends "${missing[@]}" >/dev/null ||
    stop "apt does not find all packages: look to the network and its sources, then type: $line"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    stop "apt could not install all packages; type: $line"
}

# Configures the build folder with the given options; in CI, warnings are errors.
configure() {
  cmake -S "$ROOT" -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE="$BUILD_TYPE" \
    ${CI:+-DVEM_WARNINGS_AS_ERRORS=ON} "$@" >"$BUILD_DIR.configure.log" 2>&1 || {
    cat "$BUILD_DIR.configure.log"
    return 1
  }
}

build() {
  cmake --build "$BUILD_DIR" --parallel "$JOBS" "$@"
}

# build_libraries NAME FLAGS: the two libraries alone, by g++ with these flags, in build/libraries-NAME.
# Their paths in what a debugger reads begin at the project, wherever that lies.
build_libraries() {
  local folder=$ROOT/build/libraries-$1
  cmake -S "$ROOT" -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++ \
    -DCMAKE_CXX_FLAGS_RELEASE="$2 -ffile-prefix-map=\"$ROOT\"=." -DVEM_WARNINGS_AS_ERRORS=ON \
    -DVEM_PRECOMPILE_LIBRARIES=ON -DVEM_BUILD_TESTS=OFF -DVEM_BUILD_EXAMPLES=OFF \
    >"$folder.configure.log"
  cmake --build "$folder" --parallel "$JOBS" --target VemData VemRLC
}

mkdir -p "$ROOT/build"

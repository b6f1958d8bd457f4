# Sourced by play, test and the other scripts: installs Debian packages that are missing, and nothing when all are there.

packages_build="g++ cmake ninja-build pkg-config libsdl1.2-dev libsdl-mixer1.2-dev libdevil-dev libpng-dev libglu1-mesa-dev libgl1-mesa-dev"
packages_display="libgl1-mesa-dri xvfb xdotool imagemagick"
packages_test="libgtest-dev python3-minimal libpython3-stdlib openbox"
packages_check="git clang clang-format clang-tidy flake8 libbenchmark-dev libinih-dev libsimpleini-dev"
packages_package="dpkg-dev file gzip lintian desktop-file-utils appstream"
packages_try="debootstrap xvfb xdotool binutils"
packages_bench="libbenchmark-dev libinih-dev libsimpleini-dev"
packages_fuzz="clang libclang-rt-dev"

install_missing() {
    local missing="" package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing"
    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Please install these as root first:$missing" >&2; return 1; }
        as_root="sudo"
    fi
    $as_root apt-get update -qq
    # shellcheck disable=SC2086 # one word a package
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Test programs share a compiled header, which the compiler cache must be told to trust.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# Configures a preset when that was not done yet and builds it, in silence unless it is the first time or something fails:
# then the tools' own words are shown and the caller stops.
build_preset() { # preset [target ...]
    local preset=$1 report=build/$1.log
    shift
    if ! mkdir -p build 2>/dev/null || [ ! -w build ]; then
        echo "Nothing can be built here: $PWD may not be written." >&2
        return 1
    fi
    if [ ! -f "build/$preset/build.ninja" ]; then
        echo "Building '$preset' for the first time: a minute for the game, a few for the tests ..."
        cmake --preset "$preset" >"$report" 2>&1 || { cat "$report" >&2; return 1; }
    fi
    ninja -C "build/$preset" "$@" >"$report" 2>&1 || { tail -n 60 "$report" >&2; return 1; }
}

# Functions that bring a Debian 12 machine and the build folder to the state that `run` and `test` need. To be sourced;
# all they say goes to standard error.

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

program_packages=(
    cmake ninja-build g++ ccache pkg-config
    qt6-base-dev qt6-svg-dev qt6-image-formats-plugins libgl-dev
    libsimdjson-dev libspdlog-dev libsqlite3-dev libcurl4-openssl-dev libutf8proc-dev libfontconfig-dev liburiparser-dev uuid-dev
    libpng-dev libjpeg-dev libwebp-dev zlib1g-dev libcpp-httplib-dev libssl-dev libcli11-dev
    fonts-inter fonts-dejavu-core fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji libthai0
)
test_packages=(
    libgtest-dev python3 python3-jsonschema doxygen
    qt6-declarative-dev qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtquick-window
    qml6-module-qtqml qml6-module-qtqml-workerscript
    xvfb openbox xdotool wmctrl x11-utils imagemagick dbus at-spi2-core python3-gi gir1.2-atspi-2.0
)
# The fuzzer comes with Clang's own libraries.
fuzz_packages=(clang libclang-rt-14-dev)

say() { echo "$@" >&2; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# install_missing PACKAGE…
install_missing() {
    if ! command -v dpkg-query > /dev/null; then
        say "This is no Debian machine; these packages or their like are needed: $*"
        return
    fi
    local installed missing=() package
    installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "$@" 2> /dev/null || true)"
    for package in "$@"; do
        [[ "$installed" == *" installed:$package "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing ${missing[*]}"
    as_root apt-get update < /dev/null >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}" < /dev/null >&2
}

cached() { grep -qxF "$2" "$1/CMakeCache.txt" 2> /dev/null; }

# configure PRESET [CMAKE ARGUMENT…]
configure() {
    local preset="$1"
    shift
    local folder="$root/build/$preset"
    # A folder that was made elsewhere, before the sources moved, cannot be used here.
    if [ -e "$folder/CMakeCache.txt" ] && ! cached "$folder" "CMAKE_HOME_DIRECTORY:INTERNAL=$root"; then
        rm -rf "$folder"
    fi
    (cd "$root" && cmake --preset "$preset" "$@" >&2)
}

# build PRESET [CMAKE BUILD ARGUMENT…]
build() {
    local preset="$1"
    shift
    (cd "$root" && cmake --build --preset "$preset" "$@" >&2)
}

# build_program PRESET
#
# Only the program; the tests are left as they are, so that this and a build of the tests never undo each other.
build_program() {
    local folder="$root/build/$1"
    if [ ! -e "$folder/build.ninja" ] || ! cached "$folder" "CMAKE_HOME_DIRECTORY:INTERNAL=$root"; then
        configure "$1" -DVANTIX_TESTS=OFF
    fi
    build "$1" --target vantix-inapp
}

# configure_with_tests PRESET [CMAKE ARGUMENT…]
configure_with_tests() {
    local folder="$root/build/$1"
    if [ ! -e "$folder/build.ninja" ] || ! cached "$folder" "CMAKE_HOME_DIRECTORY:INTERNAL=$root" ||
        ! cached "$folder" "VANTIX_TESTS:BOOL=ON"; then
        configure "$@" -DVANTIX_TESTS=ON
    fi
}

# build_with_tests PRESET [CMAKE ARGUMENT…]
build_with_tests() {
    configure_with_tests "$@"
    build "$1"
}

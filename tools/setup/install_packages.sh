# SPDX-License-Identifier: Apache-2.0
# install_packages: makes sure that Debian packages are there; sourced by ./run and ./test.

# Installs those of the named packages that are missing; asks for nothing when all are there.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Please install as root: ${missing[*]}" >&2; return 1; }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# What building needs, and what the windows need to show themselves.
BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev libgl-dev)
WINDOW_PACKAGES=(libqt6widgets6 libqt6gui6 libqt6printsupport6 qt6-qpa-plugins fonts-dejavu-core xvfb xauth)
# What it takes to use the program from outside, as a person at a screen does.
OUTSIDE_PACKAGES=(at-spi2-core dbus-daemon openbox faketime python3-gi gir1.2-atspi-2.0 util-linux mount)
# What the benchmarks are built with: the peers, and what the program is driven by.
BENCH_PACKAGES=(libsqlite3-dev mdbtools-dev pkg-config libgtest-dev python3-minimal)

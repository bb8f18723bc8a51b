# shellcheck shell=bash
# What the scripts share: the tree's place, messages, packages. Sourced after `set -euo pipefail`.

root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
export DEBIAN_FRONTEND=noninteractive

say() { printf '==> %s\n' "$*"; }
warn() { printf 'warning: %s\n' "$*" >&2; }
die() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "this needs root and there is no sudo: $*"
    fi
}

# Packages by purpose; `packages_for native lint` prints both lists.
packages_for() {
    local group
    for group in "$@"; do
        case $group in
            native)
                echo g++ cmake ninja-build pkg-config libxml2-dev libcurl4-openssl-dev libsqlitecpp-dev \
                    nlohmann-json3-dev libcli11-dev libcpp-httplib-dev libfmt-dev libbsd-dev libutf8proc-dev \
                    libmd4c-dev libmd4c-html0-dev
                ;;
            tests) echo libgtest-dev libgmock-dev curl libxml2-utils ;;
            bench) echo libbenchmark-dev libpugixml-dev ;;
            windows) echo g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools googletest ;;
            wine) echo wine wine64 ;;
            pascal) echo fp-compiler fpc-source ;;
            page) echo chromium libxml2-utils ;;
            lint) echo clang-format clang-tidy shellcheck ;;
            fuzz) echo clang libclang-rt-dev ;;
            torture) echo strace ;;
            package) echo git dpkg-dev nsis zip unzip xz-utils file lintian man-db ;;
            *) die "no such group of packages: $group" ;;
        esac
    done
}

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Touches apt only when something is missing, so that a prepared machine needs no network.
install_packages() {
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "installing ${missing[*]}"
    as_root apt-get -q update || warn "some package lists could not be fetched; trying with what is there"
    as_root env DEBIAN_FRONTEND="$DEBIAN_FRONTEND" apt-get -q -y install --no-install-recommends "${missing[@]}"
}

# Where the 32-bit Wine comes from: the machine itself, a small system of its own, or nowhere yet.
i386_root=$root/build/i386-root
wine_x86_source() {
    if [ -e "$i386_root/.ready" ]; then
        echo chroot
    elif is_installed wine32:i386; then
        echo multiarch
    else
        echo none
    fi
}

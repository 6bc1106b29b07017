# Shared by scripts/run and scripts/test. Installs only the Debian packages
# that are missing, then configures a CMake preset once and builds it.

KW_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# What builds and runs the window: Qt's X11/offscreen platform plugins and a
# Chinese font, so that the interface never renders its text as boxes; what
# builds and checks the Debian package; and clang for the parsers' fuzzer.
KW_PACKAGES=(cmake ninja-build g++ pkg-config qt6-base-dev qt6-qpa-plugins qt6-tools-dev
             qt6-l10n-tools fonts-noto-cjk
             libgtest-dev libgmock-dev libbenchmark-dev dpkg-dev file desktop-file-utils
             appstream clang libclang-rt-14-dev)

# kw_ensure_packages [EXTRA...]: the packages above plus any given.
kw_ensure_packages() {
    local missing=()
    local package
    for package in "${KW_PACKAGES[@]}" "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$package")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    echo "Installing missing packages: ${missing[*]}" >&2
    local sudo=()
    if [[ $(id -u) -ne 0 ]]; then
        sudo=(sudo)
    fi
    "${sudo[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >&2
}

# kw_build PRESET [TARGET...]: configure once, then build incrementally.
kw_build() {
    local preset="$1"
    shift
    if [[ ! -f "$KW_ROOT/build/$preset/build.ninja" ]]; then
        cmake --preset "$preset" -S "$KW_ROOT" >&2
    fi
    cmake --build "$KW_ROOT/build/$preset" -- "$@" >&2
}

# Sourced by ./run, ./test: installs what is missing by package name, and builds.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages=(build-essential python3 cmake ninja-build ccache pkg-config git clang-format
    qt6-base-dev qt6-base-dev-tools qt6-declarative-dev libqt6sql6-odbc qt6-translations-l10n libgl1-mesa-dev
    libsqlite3-dev unixodbc unixodbc-dev tdsodbc libsqliteodbc libxlsxwriter-dev
    libgtest-dev libbenchmark-dev libmuparser-dev fonts-noto-cjk)

install_packages() {
    local missing=() package
    for package in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "安裝套件 / installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"/tmp/liaowu-configure-$preset.log" 2>&1 ||
        { cat "/tmp/liaowu-configure-$preset.log"; return 1; }
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

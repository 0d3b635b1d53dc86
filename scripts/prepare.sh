# Sourced by the other scripts: goes to the project's folder and sees that the packages that the
# build needs are there.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

# need_packages NAME...: installs the packages that are missing. It needs a Debian or Ubuntu system
# and root, or sudo; elsewhere it says what is missing and ends the script.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian or Ubuntu system. Install what stands for these packages, then run this again:" >&2
        echo "  $*" >&2
        for tool in g++ cmake ninja; do
            command -v "$tool" >/dev/null || { echo "Not found: $tool" >&2; exit 1; }
        done
        return
    fi
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and installing them needs root. As root, run:" >&2
            echo "  apt-get update && apt-get install ${missing[*]}" >&2
            exit 1
        fi
        root=(sudo)
    fi
    echo "Installing ${missing[*]}" >&2
    "${root[@]}" apt-get update -qq >&2 &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2 ||
        { echo "The packages could not be installed: ${missing[*]}" >&2; exit 1; }
}

# What a build of everything needs.
build_packages=(g++ cmake ninja-build python3-minimal python3-dev pybind11-dev nlohmann-json3-dev libceres-dev libcli11-dev libxlsxwriter-dev libgtest-dev libgmock-dev libbenchmark-dev
    qt6-base-dev qt6-svg-dev libqcustomplot-dev libgl-dev fonts-dejavu-core)

# configure_and_build PRESET [TARGET...]: quiet unless it fails.
configure_and_build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${@/#/--target=}"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        echo "The build failed." >&2
        exit 1
    fi
    rm -f "$log"
}

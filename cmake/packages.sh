# shellcheck shell=sh disable=SC2034
# Sourced by ./demo and ./check: looks for the Debian packages that a build needs and installs those that
# are missing, or prints the one line that does. cmake/packages.cmake knows those that CMake looks for, too.
build_packages="g++ cmake ninja-build"
product_packages="libcli11-dev nlohmann-json3-dev gemmi-dev tao-pegtl-dev zlib1g-dev libjs-three help2man
    python3-dev python3-numpy pybind11-dev"
check_packages="clang libclang-rt-dev clang-format clang-tidy flake8 shellcheck libgtest-dev libbenchmark-dev
    abigail-tools binutils pkg-config dpkg-dev file doxygen python3-pytest python3-hypothesis mypy
    python3-matplotlib python3-pandas python3-gemmi python3-pip python3-venv python3-pybind11"
# Tests of the Python package that need these say that they are skipped without: they are large.
large_packages="python3-distributed python3-biopython python3-mdanalysis"

installed() { dpkg-query -W -f '${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

need() { # need PACKAGE...
    if ! command -v dpkg-query >/dev/null; then
        echo "Not a Debian system: going on as if it had what these packages hold: $*" >&2
        return
    fi
    missing=""
    for package; do
        installed "$package" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" = 0 ]; then
        as_root=""
    elif sudo -n true 2>/dev/null; then
        as_root="sudo"
    else
        echo "Packages are missing. Install them with this line and start again:" >&2
        echo "  sudo apt-get update && sudo apt-get install --no-install-recommends$missing" >&2
        exit 1
    fi
    echo "Installing:$missing"
    # shellcheck disable=SC2086  # lists of words on purpose
    $as_root apt-get update -qq &&
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Sourced by ./demo and ./check: looks for what a build needs and installs the Debian packages that are
# missing, or prints the one line that does.
missing=""

need() { # need PACKAGE COMMAND...: the package is missing when the command fails
    package=$1
    shift
    "$@" >/dev/null 2>&1 || missing="$missing $package"
}
installed() { dpkg-query -W -f '${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

install_missing() {
    [ -n "$missing" ] || return 0
    # shellcheck disable=SC2086  # a list of words on purpose
    if [ "$(id -u)" = 0 ]; then
        echo "Installing:$missing"
        apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
    elif sudo -n true 2>/dev/null; then
        echo "Installing with sudo:$missing"
        sudo apt-get update -qq && sudo DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
    else
        echo "Packages are missing. Install them with this line and start again:" >&2
        echo "  sudo apt-get install --no-install-recommends$missing" >&2
        exit 1
    fi
    missing=""
}

need_build_tools() {
    need g++ g++ --version
    need cmake cmake --version
    need ninja-build ninja --version
}

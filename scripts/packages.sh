# Sourced by ./run and ./check. Installs the packages of packages.txt that are missing.

# Prints the packages of one section of packages.txt.
packages_of_section() {
    awk -v section="[$1]" '/^\[/ { inside = ($1 == section); next } inside && NF && $1 !~ /^#/ { print $1 }' packages.txt
}

package_is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "This needs root or sudo: $*" >&2
        return 1
    fi
}

# ensure_packages SECTION...: fails when a missing package can not be installed.
ensure_packages() {
    local section package missing=()
    for section in "$@"; do
        for package in $(packages_of_section "$section"); do
            package_is_installed "$package" || missing+=("$package")
        done
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "Installing: ${missing[*]}"
    as_root apt-get update -q </dev/null &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" </dev/null
}

# Shared by ./run and ./test: makes sure that the Debian packages of the project are installed.
# shellcheck shell=bash

come_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# installa_pacchetti [LIST...]: those of packaging/pacchetti-debian.txt and of the other lists there.
# A number behind a package is the first release of Debian that has it.
installa_pacchetti() {
    local lists missing=() package since release
    release=$(. /etc/os-release && echo "${VERSION_ID:-999}")
    lists="$(dirname "${BASH_SOURCE[0]}")/../packaging"
    while read -r package since; do
        [ "${since:-0}" -le "${release%%.*}" ] || continue
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done < <(cd "$lists" && grep -hv -e '^#' -e '^$' pacchetti-debian.txt "$@")
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "Installing ${missing[*]}"
    come_root apt-get update -qq
    come_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# compila PRESET [TARGET...]: configures once, then builds.
compila() {
    local preset=$1
    shift
    cmake --preset "$preset" > /dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"} -- --quiet
}

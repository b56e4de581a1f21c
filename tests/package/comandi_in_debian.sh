#!/usr/bin/env bash
# Runs ./run and ./test in bare Debians, on what is committed.
# comandi_in_debian.sh RELEASE...: needs the rights of root.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$(mktemp -d)
chmod 755 "$root"
trap 'umount "$root/debian/proc" 2> /dev/null || true; rm -rf "$root"' EXIT
# The archive that this machine uses.
mirror=$(apt-get indextargets --format '$(SITE)' 'Codename: bookworm' | head -n 1)

for release in "$@"; do
    echo "Installing a bare Debian: $release"
    rm -rf "${root:?}/debian"
    debootstrap --variant=minbase "$release" "$root/debian" "$mirror" > "$root/log" ||
        { tail "$root/log" >&2; exit 1; }
    mkdir -p "$root/debian/zelto"
    mount -t proc proc "$root/debian/proc"
    git archive HEAD | tar -x -C "$root/debian/zelto"
    for command in ./run ./test; do
        echo "$release: $command"
        chroot "$root/debian" env -u DISPLAY -u WAYLAND_DISPLAY -u CMAKE_CXX_COMPILER_LAUNCHER \
            -u CMAKE_C_COMPILER_LAUNCHER LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
            sh -c "cd /zelto && $command" > "$root/log" 2>&1 || { tail -n 50 "$root/log" >&2; exit 1; }
    done
    umount "$root/debian/proc"
done
echo "Both commands work."

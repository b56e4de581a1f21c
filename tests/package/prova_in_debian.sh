#!/usr/bin/env bash
# Installs the package in a bare Debian 12, has two users work with it and removes it again.
# prova_in_debian.sh PACKAGE: needs the rights of root.
set -euo pipefail
package=$1
root=$(mktemp -d)
chmod 755 "$root"
trap 'umount "$root/proc" 2> /dev/null || true; rm -rf "$root"' EXIT

fail() {
    echo "$*" >&2
    exit 1
}

in_root() { chroot "$root" env -u XDG_DATA_HOME LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }

as_user() { # USER COMMAND...: as at a desktop of his own
    local user=$1
    shift
    in_root runuser -u "$user" -- env HOME="/home/$user" QT_QPA_PLATFORM=offscreen \
        XDG_RUNTIME_DIR="/home/$user" "$@"
}

# double_clicked USER FILE: what a file manager does with it; the program keeps a copy of what it opened.
double_clicked() {
    local kept="$root/home/$1/.local/share/zelto/copie" i
    as_user "$1" gio open "$2"
    for ((i = 0; i < 300; i++)); do
        [ -z "$(find "$kept" -name '*.ZLT' 2> /dev/null)" ] || break
        sleep 0.1
    done
    in_root pkill -u "$1" -x zelto || fail "$1 has no window"
    [ $i -lt 300 ] || fail "$1 has not opened $2"
}

echo "Installing a bare Debian 12"
# The archive that this machine uses.
mirror=$(apt-get indextargets --format '$(SITE)' 'Codename: bookworm' | head -n 1)
debootstrap --variant=minbase bookworm "$root" "$mirror" > "$root.log" || fail "$(tail "$root.log")"
rm "$root.log"
mount -t proc proc "$root/proc" 2> /dev/null || true
cp "$package" "$root/zelto.deb"
in_root apt-get -qq update
echo "Installing the package"
in_root apt-get -qq -y --no-install-recommends install /zelto.deb libglib2.0-bin shared-mime-info \
    desktop-file-utils procps man-db > /dev/null 2>&1 || fail "the package cannot be installed"

for user in anna bruno; do
    in_root useradd -m "$user"
    # By its content: a job without an extension.
    install -m 644 "$root/usr/share/zelto/CONDOMINIO-ESEMPIO.ZLT" "$root/home/$user/casa di $user"
    in_root chown "$user:" "/home/$user/casa di $user"
    as_user "$user" gio info -a standard::content-type "/home/$user/casa di $user" |
        grep -q application/x-zelto-job || fail "the job is not recognised by its content"
    double_clicked "$user" "/home/$user/casa di $user"
    as_user "$user" sh -c "cd && zelto-stampa -o casa.pdf -u . 'casa di $user' && [ -s calcolo.out ]"
    [ "$(pdftotext "$root/home/$user/casa.pdf" - | grep -c 'TABELLE MILLESIMALI')" -ge 1 ] ||
        fail "$user has not printed the job"
done
cmp "$root/home/anna/calcolo.out" "$root/home/bruno/calcolo.out"
find "$root/home/anna/.local" | grep -q bruno && fail "the users meet"
as_user anna sh -c 'cd; echo x > casa.zLt; gio info -a standard::content-type casa.zLt' |
    grep -q application/x-zelto-job || fail "the job is not recognised by its name"

in_root apt-get -qq -y purge zelto > /dev/null
left=$(find "$root/usr" "$root/etc" "$root/var/lib" -iname '*zelto*' -not -path '*/dpkg/*' -not -path '*/man-db/*')
[ -z "$left" ] || fail "left behind: $left"
[ -s "$root/home/anna/casa di anna" ] || fail "the job went with the program"
echo "Installed, used by two users, removed: everything as it should be."

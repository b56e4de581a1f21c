#!/usr/bin/env bash
# Builds the Debian package of a build tree and looks at it as an archive would.
# controlla_pacchetto.sh BUILD: leaves the package in BUILD/package/.
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
chmod 755 "$work"
unpacked=$work/unpacked

rm -f "$build"/package/*.deb
(cd "$build" && cpack -G DEB > /dev/null)
package=$(echo "$build"/package/zelto_*.deb)
dpkg-deb -x "$package" "$unpacked"

missing=0
while read -r path; do
    [ -e "$unpacked/$path" ] && continue
    echo "not in the package: $path" >&2
    missing=1
done <<'PATHS'
usr/bin/zelto
usr/bin/zelto-stampa
usr/bin/zelto-converti
usr/share/zelto/Zelto.mdb
usr/share/zelto/CONDOMINIO-ESEMPIO.ZLT
usr/share/applications/zelto.desktop
usr/share/metainfo/org.zelto.Zelto.metainfo.xml
usr/share/mime/packages/zelto.xml
usr/share/icons/hicolor/scalable/apps/zelto.svg
usr/share/icons/hicolor/16x16/apps/zelto.png
usr/share/icons/hicolor/48x48/apps/zelto.png
usr/share/icons/hicolor/256x256/apps/zelto.png
usr/share/man/man1/zelto.1.gz
usr/share/man/it/man1/zelto-stampa.1.gz
usr/share/doc/zelto/copyright
usr/share/doc/zelto/changelog.gz
PATHS

dpkg-deb -f "$package" Depends | grep -q fonts-liberation
desktop-file-validate "$unpacked/usr/share/applications/zelto.desktop"
appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.xml
lintian --allow-root --fail-on error,warning "$package"

# opens FOLDER HOME COMMAND...: the program, started by COMMAND, opens the example and keeps its files there.
opens() {
    local kept=$1/copie home=$2 i
    shift 2
    HOME=$home XDG_DATA_HOME=$home/data QT_QPA_PLATFORM=offscreen "$@" \
        "$unpacked/usr/share/zelto/CONDOMINIO-ESEMPIO.ZLT" &
    for ((i = 0; i < 300; i++)); do
        [ -z "$(find "$kept" -name '*.ZLT' 2> /dev/null)" ] || break
        sleep 0.1
    done
    kill $!
    wait $! 2> /dev/null || true
    [ $i -lt 300 ] || { echo "$1 has no copy of the job" >&2; return 1; }
}

as_plain_user=()
[ "$(id -u)" -ne 0 ] || as_plain_user=(setpriv --reuid 65534 --regid 65534 --clear-groups)

# On a stick: settings, master database and copies stay beside the program.
mkdir "$work/home"
opens "$unpacked/usr/bin" "$work/home" "$unpacked/usr/bin/zelto"
[ -e "$unpacked/usr/bin/Zelto.mdb" ]
[ -z "$(ls -A "$work/home/data" 2> /dev/null)" ]
rm -r "$unpacked/usr/bin/Zelto.mdb" "$unpacked/usr/bin/copie"

# Where the user may not write, they are his own.
chmod -R a-w "$unpacked"
mkdir "$work/user"
chmod 777 "$work/user"
opens "$work/user/data/zelto" "$work/user" "${as_plain_user[@]}" "$unpacked/usr/bin/zelto"
[ ! -e "$unpacked/usr/bin/Zelto.mdb" ]
exit $missing

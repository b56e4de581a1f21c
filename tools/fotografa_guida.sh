#!/usr/bin/env bash
# Takes the pictures of docs/immagini anew: the real program with the example job, driven by its keys.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepara.sh

echo "Takes the pictures of the guide from the running program."
installa_pacchetti pacchetti-guida.txt
compila debug zelto zelto_example zelto_build_job

pictures=docs/immagini
# What the windows show of it: the user's own folder, short and without a name.
home=/home/anna
job=$home/lavori/CONDOMINIO-ESEMPIO.ZLT
[ ! -e "$home" ] || { echo "$home is in the way" >&2; exit 1; }
come_root mkdir -p "$home/lavori"
come_root chown -R "$(id -u)" "$home"
trap 'kill $(jobs -p) 2> /dev/null || true; wait; come_root rm -rf "$home"' EXIT
cp build/debug/share/zelto/*.ZLT "$home/lavori/"
build/debug/bin/zelto_build_job tests/guide/palazzina_betulla "$home/lavori/betulla.ZLT"
touch -d '2026-01-31 17:05:21' "$home"/lavori/*
mkdir "$home/bin"
cp build/debug/bin/zelto build/debug/share/zelto/Zelto.mdb "$home/bin/"

export DISPLAY=:77 HOME=$home XDG_CURRENT_DESKTOP= LC_ALL=C.UTF-8
Xvfb $DISPLAY -screen 0 1280x900x24 2> /dev/null &
sleep 1
openbox &
sleep 1

keys() { xdotool key --clearmodifiers --delay 80 "$@"; sleep 0.7; }

# picture NAME: of the window that has the keyboard, with its frame.
picture() {
    sleep 0.5
    import -silent -window "$(xdotool getactivewindow)" -strip PNG8:"$pictures/$1.png"
}

start() { # JOB
    "$home/bin/zelto" "$1" &
    program=$!
    sleep 3
}

stop() {
    keys ctrl+q
    wait $program
}

start "$home/lavori/betulla.ZLT"
keys ctrl+3
picture parametri
stop

start "$job"
picture finestra
keys ctrl+1
picture dati_generali
keys Escape ctrl+2
picture variabili
keys Escape ctrl+3
picture elenco
keys Down Down Down Down Down Down ctrl+Tab
picture dettaglio
keys ctrl+Tab
picture vani
keys Right Right Right Delete F7
picture controllo
keys F7 ctrl+z F7 Escape
keys ctrl+m
picture millesimi
keys alt+a
keys Next Next Next Next Next Next Next Next Next
picture anteprima
keys Escape ctrl+r
xdotool type 1250,50
picture riparto
keys Escape ctrl+w
# Three states of the job, the last of them with a unit less.
for state in 1 2; do
    stop
    touch -d "2026-02-0$state 09:41:0$state" "$job"
    start "$job"
done
keys alt+f r
picture ripristina
keys Escape
stop

# Sourced by the project's shell scripts: how they speak, and how they show progress.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*"; }

fail() {
    clear_progress
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# progress TEXT PERCENT: one line that updates itself on a terminal; elsewhere a plain line twice a minute.
last_progress=0
progress() {
    if [ -t 1 ]; then
        printf '\r\033[K%s  %s %%' "$1" "$2"
    elif [ $((SECONDS - last_progress)) -ge 30 ]; then
        last_progress=$SECONDS
        say "$1  $2 %"
    fi
}

clear_progress() {
    if [ -t 1 ]; then printf '\r\033[K'; fi
}

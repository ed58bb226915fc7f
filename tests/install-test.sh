#!/usr/bin/env bash
# Runs ./install.sh for a home of its own: install-test.sh SOURCE_FOLDER
# What dist/ holds must be there already, or the script builds it.
set -euo pipefail
source=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT

fail() {
    echo "$1" >&2
    find "$home" >&2
    exit 1
}

expect() {
    local text=$1 wanted=$2
    [[ $text == *"$wanted"* ]] || fail "'$wanted' was not said, but: $text"
}

run() {
    env HOME="$home" PATH="$path" "$source/install.sh" "$@"
}

path=/usr/bin:/bin
text=$(run)
expect "$text" "Installed $home/.local/bin/SOLVANE"
expect "$text" "your PATH lacks $home/.local/bin"

for file in .vst/SOLVANE.so .vst3/SOLVANE.vst3 .lv2/SOLVANE.lv2/manifest.ttl .local/bin/solvane .local/bin/SOLVANE \
    .local/share/man/man1/solvane.1 .local/share/bash-completion/completions/solvane \
    .local/share/zsh/site-functions/_solvane; do
    [ -e "$home/$file" ] || fail "$file is missing"
done

[[ $("$home/.local/bin/solvane" --version) == SOLVANE\ * ]] || fail "the program does not run"

path=$home/.local/bin:$path
text=$(run)
[ "$text" = "Nothing to do: everything is installed and up to date." ] || fail "a second run said: $text"

printf 'changed' > "$home/.local/share/man/man1/solvane.1"
text=$(run)
[ "$text" = "Installed $home/.local/share/man/man1/solvane.1" ] || fail "an outdated page gave: $text"

mkdir -p "$home/.vst3/Other.vst3"
text=$(run --uninstall)
expect "$text" "Removed $home/.local/bin/SOLVANE"
[ -z "$(find "$home" -not -type d)" ] || fail "files are left"
[ -d "$home/.vst3/Other.vst3" ] || fail "the plug-in of somebody else is gone"
[ "$(run --uninstall)" = "Nothing to do: nothing of SOLVANE is installed." ] || fail "a second removal said otherwise"

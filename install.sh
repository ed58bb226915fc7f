#!/usr/bin/env bash
# Puts the plug-ins where hosts look for a user's own, the two programs into ~/.local/bin, and the manual page and the
# shells' completions beside them: ./install.sh [--uninstall]
# Builds them first where dist/ has none.
set -euo pipefail
cd "$(dirname "$0")"

uninstall=false
case ${1:-} in
    "") ;;
    --uninstall) uninstall=true ;;
    *) echo "Usage: ./install.sh [--uninstall]" >&2; exit 2 ;;
esac

programs=$HOME/.local/bin
completions=(share/bash-completion/completions/solvane share/zsh/site-functions/_solvane)
products=(vst/SOLVANE.so vst3/SOLVANE.vst3 lv2/SOLVANE.lv2 bin/solvane standalone/SOLVANE
    share/man/man1/solvane.1 "${completions[@]}")
places=("$HOME/.vst/SOLVANE.so" "$HOME/.vst3/SOLVANE.vst3" "$HOME/.lv2/SOLVANE.lv2" "$programs/solvane"
    "$programs/SOLVANE" "$HOME/.local/share/man/man1/solvane.1" "${completions[@]/#/$HOME/.local/}")

count=0

if $uninstall; then
    for place in "${places[@]}"; do
        [ -e "$place" ] || [ -L "$place" ] || continue
        rm -rf -- "$place"
        echo "Removed $place"
        count=$((count + 1))
    done

    [ $count -gt 0 ] || echo "Nothing to do: nothing of SOLVANE is installed."
    exit 0
fi

for product in "${products[@]}"; do
    [ -e "dist/$product" ] || { scripts/build-product.sh; break; }
done

for index in "${!products[@]}"; do
    from=dist/${products[index]}
    place=${places[index]}
    ! diff -rq -- "$from" "$place" >/dev/null 2>&1 || continue

    # Copied beside and then renamed: a host that has the old file open keeps it whole.
    mkdir -p "$(dirname "$place")"
    rm -rf -- "$place.new"
    cp -a -- "$from" "$place.new"
    rm -rf -- "$place"
    mv -- "$place.new" "$place"
    echo "Installed $place"
    count=$((count + 1))
done

[ $count -gt 0 ] || echo "Nothing to do: everything is installed and up to date."

case :$PATH: in
    *:"$programs":* | *:"$programs/":*) ;;
    *) echo "Note: your PATH lacks $programs, so the shell does not find solvane there. A line for ~/.profile:"
       echo "    PATH=\"\$HOME/.local/bin:\$PATH\"" ;;
esac

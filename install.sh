#!/usr/bin/env bash
# Puts the plug-ins where hosts look for a user's own, and the program into ~/.local/bin: ./install.sh [--uninstall]
# Builds them first where dist/ has none.
set -euo pipefail
cd "$(dirname "$0")"

uninstall=false
case ${1:-} in
    "") ;;
    --uninstall) uninstall=true ;;
    *) echo "Usage: ./install.sh [--uninstall]" >&2; exit 2 ;;
esac

products=(vst/SOLVANE.so vst3/SOLVANE.vst3 lv2/SOLVANE.lv2 bin/solvane)
places=("$HOME/.vst/SOLVANE.so" "$HOME/.vst3/SOLVANE.vst3" "$HOME/.lv2/SOLVANE.lv2" "$HOME/.local/bin/solvane")

if $uninstall; then
    for place in "${places[@]}"; do
        [ -e "$place" ] || continue
        rm -rf -- "$place"
        echo "Removed $place"
    done
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
done

#!/usr/bin/env bash
# Draws each kind of message (Examples/sheet/*.json) in each script (Examples/sheet/*.txt), on every device, at 100 and
# 200 % of the text size, into a folder: one sheet of devices for each, its campaign beside it, and all of them in
# index.html.
#
#     scripts/sheet.sh [FOLDER]        (else out/sheet)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

install_missing "${program_packages[@]}"
build_program release
program="$root/build/release/Tools/vantix-inapp/vantix-inapp"
folder="${1:-$root/out/sheet}"
mkdir -p "$folder"

exec {backend}< <(exec "$program" backend --images "$root/tests/Pictures")
trap "kill $!" EXIT
read -r address <&"$backend"
image="$(sed 's/.*"baseURL":"\([^"]*\)".*/\1/' <<<"$address")/images/picture.png"

# The kind with its words put in, which are the lines of a file of texts.
campaign() {
    mapfile -t words <"$2"
    sed -e "s|IMAGE|$image|" -e "s|TITLE|${words[0]}|" -e "s|MESSAGE|${words[1]}|" -e "s|BUTTON|${words[2]}|" \
        -e "s|SECOND|${words[3]}|" -e "s|FIRST|${words[4]}|" -e "s|MIDDLE|${words[5]}|" -e "s|LAST|${words[6]}|" "$1"
}

echo '<!doctype html><meta charset="utf-8"><title>All messages</title><style>img { width: 49% }</style>' >"$folder/index.html"
for kind in "$root"/Examples/sheet/*.json; do
    for texts in "$root"/Examples/sheet/*.txt; do
        name="$(basename "$kind" .json)-$(basename "$texts" .txt)"
        campaign "$kind" "$texts" >"$folder/$name.json"
        echo "<h2>$name</h2>" >>"$folder/index.html"
        for size in 1 2; do
            "$program" render "$folder/$name.json" -o "$folder/$name-${size}00.png" --text-scale "$size" --strict
            echo "<img src=\"$name-${size}00.png\">" >>"$folder/index.html"
        done
    done
done
say "Drawn: $folder/index.html"

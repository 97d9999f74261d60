#!/usr/bin/env bash
# Draws the gallery: each campaign of docs/campaigns, as a phone shows it, into the picture beside it.
#
#     scripts/gallery.sh [CAMPAIGN…]        (else all)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

install_missing "${program_packages[@]}"
build_program release
program="$root/build/release/Tools/vantix-inapp/vantix-inapp"
folder="$root/docs/campaigns"
[ $# -gt 0 ] || set -- "$folder"/*.json

# Whatever the campaign waits for happens, and someone chooses four stars, the first option and the fourth, where there
# are any. Its images come from the folder; the end of their addresses satisfies banners, which insist on https.
scenario() {
    cat << EOF
{"configure": {"customerId": "c-2041", "applicationState": "inactive", "logLevel": "error", "device": {"width": 390, "height": 844, "scale": 2, "safeArea": [47, 0, 34, 0]}}}
{"backend": {"images": "$folder/images"}}
{"campaign": $(tr -d '\n' < "$1" | sed 's|https://images.fjordandfell.example/\([a-z.]*\)|$BACKEND/images/\1#https:|g')}
{"state": "didBecomeActive"}
$(sed -n 's|^  "trigger": {"eventName": \(.*\)},$|{"event": \1}|p' "$1")
{"tap": {"role": "star", "label": "4"}}
{"tap": {"role": "option", "index": 0}}
{"tap": {"role": "option", "index": 3}}
{"screenshot": "$(basename "$1" .json).png"}
EOF
}

for campaign in "$@"; do
    scenario "$campaign" | "$program" play - --out "$folder" | grep '"shown"' > /dev/null || {
        say "$campaign is not shown"
        exit 1
    }
done
say "Drawn: $folder"

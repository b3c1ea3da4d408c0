#!/bin/bash
# Feeds the include checker small made-up trees and expects it to catch each
# wrong direction, so a checker that passes everything cannot go unnoticed.
set -u
checker="$(dirname "$0")/check_includes.py"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

tree() {  # tree NAME then "file|include" pairs
    local dir="$work/$1"; shift
    mkdir -p "$dir"
    for pair in "$@"; do
        local file=${pair%%|*} inc=${pair#*|}
        mkdir -p "$dir/$(dirname "$file")"
        [ -n "$inc" ] && echo "#include \"$inc\"" >> "$dir/$file" || touch "$dir/$file"
    done
    echo "$dir"
}

expect() {  # expect EXIT DIR PATTERN
    local out; out=$(python3 "$checker" "$2" 2>&1); local code=$?
    if [ "$code" != "$1" ] || ! grep -q -- "$3" <<<"$out"; then
        echo "FAIL: $2 gave exit $code, wanted $1 and '$3':"; echo "$out"
        failures=$((failures + 1))
    else
        echo "ok: $(basename "$2"): $(head -1 <<<"$out")"
    fi
}

expect 0 "$(tree good 'engine/A.h|document/B.h' 'document/B.h|' 'console/bars/C.cpp|console/controls/D.h' \
    'console/controls/D.h|engine/A.h' 'app/main.cpp|console/bars/C.h')" "all pointing one way"
expect 1 "$(tree upward 'engine/A.cpp|console/bars/B.h' 'console/bars/B.h|')" "engine includes console"
expect 1 "$(tree siblings 'capture/A.cpp|recording/B.h' 'recording/B.cpp|capture/A.h')" "folders include each other"
expect 1 "$(tree parts 'console/bars/A.cpp|console/sheets/B.h' 'console/sheets/B.cpp|console/stages/C.h' \
    'console/stages/C.cpp|console/bars/A.h')" "console parts include each other"
expect 1 "$(tree loose 'console/Loose.h|' 'console/bars/A.h|')" "outside a part's folder"

exit $((failures > 0))

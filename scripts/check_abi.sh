#!/bin/bash
# Compares types and names of the shared library's interface with those of the last version.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
reference="$ZU_ROOT/source/zu.abi.xz"
library="$ZU_ROOT/build/release/source/libzu.so"
if [ "${1:-}" = --write ]; then
    write=yes
    shift
fi
usage "$@" <<'TEXT'
usage: scripts/check_abi.sh [--write]

Reads the interface of build/release/source/libzu.so, which must have been built: every exported function and variable,
and the types that the public headers show.  What programs that were linked with the last version would miss, or see
otherwise, is a fault; what has been added is none.  The interface of the last version is in source/zu.abi.xz, which
--write rewrites: at a new version, or when an interface that no version has promised yet has been changed.
TEXT

ensure_packages build abi
work="$( mktemp -d )"
trap 'rm -rf "$work"' EXIT
# What the public headers do not show is opaque, and may change.
( cd "$ZU_ROOT/source" && find zu -name '*.h' ! -name '*_internal.h' -print0 ) \
    | while IFS= read -r -d '' header; do
        mkdir -p "$work/headers/$( dirname "$header" )"
        cp "$ZU_ROOT/source/$header" "$work/headers/$header"
    done
abidw --headers-dir "$work/headers" --drop-private-types --no-show-locs --no-corpus-path --no-comp-dir-path \
    "$library" > "$work/zu.abi"
functions="$( grep -c "type='func-type'" "$work/zu.abi" )"
if [ -n "${write:-}" ]; then
    xz -9e --stdout "$work/zu.abi" > "$reference"
    say "$reference: $functions functions, $( stat -c %s "$reference" ) bytes"
    exit
fi
xz --decompress --stdout "$reference" > "$work/reference.abi"
if ! abidiff --no-added-syms "$work/reference.abi" "$work/zu.abi" > "$work/differences"; then
    cat "$work/differences"
    fail "the interface is not that of the last version; where that is meant, see docs/versions.md and --write"
fi
say "The $functions functions and what they take keep the interface of the last version"

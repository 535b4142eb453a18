#!/bin/bash
# Rewrites source/zu.exports, the list of exported names, from the library as it stands.
# Review the difference: a name that goes missing breaks programs that exist, one that appears is a promise.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/update_exports.sh

Builds the release preset and rewrites source/zu.exports from the shared library.
TEXT

ensure_packages build test
configure release
build release zu
python3 "$ZU_ROOT/scripts/check_exports.py" --write "$ZU_ROOT/build/release/source/libzu.so"

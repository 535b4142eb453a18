#!/bin/bash
# Installs what is missing, builds the release preset and runs all tests.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/test.sh

Installs the Debian packages that are missing (as root or through sudo), builds the release preset into build/release
and runs all tests.  Run again it only does what has changed.
TEXT

ensure_packages build test
configure release -DZU_BUILD_TESTS=ON
build release
run_tests release

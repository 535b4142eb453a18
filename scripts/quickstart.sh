#!/bin/bash
# From a bare machine to a running program: installs, builds, shows.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/quickstart.sh

Installs the Debian packages that are missing (as root or through sudo), builds the library, its tool and the examples
into build/release, runs them, and says what to try next.
TEXT

ensure_packages build
# A folder that the tests use too is left as it is configured.
if [ -f "$ZU_ROOT/build/release/build.ninja" ]; then
    configure release
else
    configure release -DZU_BUILD_TESTS=OFF
fi
build release zu zu_static zu_tool example_first example_words example_sort example_wait example_hello

cd "$ZU_ROOT"
zu=build/release/tools/zu/zu
show()
{
    printf '\n%s$ %s%s\n' "$ZU_BOLD" "$*" "$ZU_PLAIN"
    "$@"
}

say "The first program: examples/first.c"
echo "It makes a text by a format, extends it, and prints it as UTF-8. The copy that it took before is unchanged:"
echo "values are shared until one of their holders changes them."
show build/release/examples/example_first

say "The tool: what is in a text file"
echo "The library reads a file into code points and knows about each one what the Unicode standard says."
show "$zu" text README.md NOTICE examples/texts/*.txt

say "The tool: from one character set to another"
show sh -c "$zu convert --from utf-8 --to koi8-r examples/texts/cyrillic.txt | $zu convert --from koi8-r --to utf-8"

say "What to try next"
cat <<TEXT
  $zu --help                      what else the tool does
  $zu text <files of your own>    any text in UTF-8
  build/release/examples/example_hello    eight greetings, from C++
  build/release/examples/example_words    strings, a vector and a dict, in C
  build/release/examples/example_sort     a class of one's own, in C
  build/release/examples/example_wait     threads and timers, in C
  scripts/test.sh                         run the tests
  cmake --install build/release --prefix <folder>   install it; README.md tells how to build against it
TEXT

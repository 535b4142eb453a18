#!/bin/bash
# Installs the release build, moves the installed tree, and builds programs against it as users do.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/check_install.sh

Installs build/release, which must have been built, into a temporary folder, moves it, and builds the examples against
it by find_package and by pkg-config, in C and in C++, with the shared and with the static library.
TEXT

install_and_move release
headers="$( find "$installed/include" -type f | wc -l )"
say "Installed: $headers headers, $( find "$installed" -type f -o -type l | wc -l ) files"
stray="$( find "$installed/include" -type f ! -path '*/include/zu/*' -o -name '*_internal.h' -o -name '*.in' )"
[ -z "$stray" ] || fail "not for users, yet installed: $stray"
for document in "$installed"/share/doc/zu/docs/*.md; do
    while read -r header; do
        [ -f "$( dirname "$document" )/$header" ] || fail "$document leads to $header, which is not installed"
    done < <( grep -o '([^()#]*[.]hp*)' "$document" | tr -d '()' )
done

say "find_package"
cmake -S "$ZU_ROOT/examples" -B "$work/by_cmake" -G Ninja -DCMAKE_PREFIX_PATH="$installed" > "$work/configure.log" \
    || { cat "$work/configure.log"; fail "find_package( zu ) failed"; }
cmake --build "$work/by_cmake"
ctest --test-dir "$work/by_cmake" --output-on-failure --no-tests=error

say "find_package in a project that knows no C++"
mkdir "$work/only_c"
cat > "$work/only_c/CMakeLists.txt" <<TEXT
cmake_minimum_required( VERSION 3.16 )
project( only_c LANGUAGES C )
find_package( zu 1.0 REQUIRED )
add_executable( shared "$ZU_ROOT/examples/sort.c" )
target_link_libraries( shared zu::zu )
add_executable( static "$ZU_ROOT/examples/sort.c" )
target_link_libraries( static zu::static )
TEXT
cmake -S "$work/only_c" -B "$work/only_c/build" -G Ninja -DCMAKE_PREFIX_PATH="$installed" > "$work/configure.log" 2>&1 \
    || { cat "$work/configure.log"; fail "find_package( zu ) failed"; }
cmake --build "$work/only_c/build"
"$work/only_c/build/shared" | cmp - "$ZU_ROOT/examples/expected/sort.txt"
"$work/only_c/build/static" | cmp - "$ZU_ROOT/examples/expected/sort.txt"

say "pkg-config"
library_dir="$( dirname "$( find "$installed" -name zu.pc )" )"
export PKG_CONFIG_PATH="$library_dir"
# by_pkg_config <package> <compiler> <example> [options]: what pkg-config says is split as the shell would split it, since
# folders may have blanks in their names.
by_pkg_config()
{
    local package="$1" compiler="$2" source="$3" program="$work/by_pkg_config"
    local -a flags
    eval "flags=( $( pkg-config --cflags --libs "$package" ) )"
    shift 3
    "$compiler" "$@" "$ZU_ROOT/examples/$source" "${flags[@]}" -o "$program"
    LD_LIBRARY_PATH="$( dirname "$library_dir" )" "$program" | cmp - "$ZU_ROOT/examples/expected/${source%.*}.txt"
}
for package in zu zu-static; do
    by_pkg_config $package cc first.c -std=c11 -Wall -Wextra -Wpedantic -Werror
    by_pkg_config $package cc sort.c -std=c11 -Wall -Wextra -Wpedantic -Werror
    by_pkg_config $package c++ hello.cpp -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wold-style-cast -Werror
done
if [ -x "$installed/bin/zu" ]; then
    say "The installed tool"
    "$installed/bin/zu" --help > /dev/null
fi
say "The installed library serves C and C++, shared and static"

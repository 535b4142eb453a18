#!/bin/bash
# Installs the build for Windows, moves the installed tree, and builds programs against it, which run under Wine.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/check_install_windows.sh

Installs build/windows-x86_64, which must have been built, into a temporary folder, moves it, and builds examples against
it by find_package and by pkg-config, with the DLL and with the static library.
TEXT

install_and_move windows-x86_64
for file in bin/zu.dll bin/zu.exe lib/libzu.dll.a lib/libzu.a include/zu/zu.h lib/cmake/zu/zuConfig.cmake; do
    [ -f "$installed/$file" ] || fail "not installed: $file"
done
export WINEDEBUG="${WINEDEBUG:--all}" WINEPATH="Z:$installed/bin"

say "find_package"
programs=( example_first example_first_static example_hello example_modules )
cmake -S "$ZU_ROOT/examples" -B "$work/by_cmake" -G Ninja -Dzu_DIR="$installed/lib/cmake/zu" \
    --toolchain "$ZU_ROOT/cmake/toolchains/windows-x86_64.cmake" -DCMAKE_C_FLAGS=-Wno-attributes \
    -DCMAKE_EXE_LINKER_FLAGS=-static > "$work/configure.log" \
    || { cat "$work/configure.log"; fail "find_package( zu ) failed"; }
cmake --build "$work/by_cmake" --target "${programs[@]}"
ctest --test-dir "$work/by_cmake" --output-on-failure --no-tests=error --timeout 60 \
    --tests-regex "^($( IFS='|'; echo "${programs[*]}" ))\$"

say "pkg-config"
export PKG_CONFIG_PATH="$installed/lib/pkgconfig"
# by_pkg_config <package> [options]: builds and runs the first example.
by_pkg_config()
{
    local -a flags
    eval "flags=( $( pkg-config --cflags --libs "$1" ) )"
    x86_64-w64-mingw32-gcc-posix -std=c11 -Wall -Wextra -Wpedantic -Werror "$ZU_ROOT/examples/first.c" "${flags[@]}" \
        "${@:2}" -o "$work/first.exe"
    wine "$work/first.exe" | tr -d '\r' | cmp - "$ZU_ROOT/examples/expected/first.txt"
}
by_pkg_config zu
by_pkg_config zu-static -static # without that, the compiler's own libraries are DLLs
say "The installed tool"
wine "$installed/bin/zu.exe" --version
say "The installed library serves C and C++, as a DLL and static"

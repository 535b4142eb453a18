#!/bin/bash
# Makes the Debian packages twice, installs them in a Debian 12 that has nothing else of this library, and takes the path
# of a newcomer there.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/check_packages.sh

Builds the packages here and from a copy of the sources elsewhere, and compares them byte by byte.  Then installs them in
a Debian 12 tree, build/debian12, which debootstrap makes at the first run (as root), and builds the examples there by
CMake and by pkg-config, in C and in C++, with warnings as errors; a module from its template, which a program loads; and
looks at a string in gdb.  Where no tree can be made it says so, unpacks the packages into a folder, and builds against
that by pkg-config.
TEXT

mirror=http://deb.debian.org/debian
tree="$ZU_ROOT/build/debian12"
work="$( mktemp -d )"
trap 'rm -rf "$work"' EXIT
quietly()
{
    "$@" > "$work/log" 2>&1 || { cat "$work/log"; fail "failed: $*"; }
}

ensure_packages build package
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
    SOURCE_DATE_EPOCH="$( git -C "$ZU_ROOT" log -1 --format=%ct 2> /dev/null || echo 0 )"
fi
export SOURCE_DATE_EPOCH
say "Packages"
quietly "$ZU_ROOT/scripts/package.sh"
packages="$ZU_ROOT/build/package/packages"
ls -l "$packages"

say "The same packages from a copy of the sources"
mkdir "$work/copy"
tar -C "$ZU_ROOT" --exclude=./build --exclude=./.git -cf - . | tar -C "$work/copy" -xf -
CCACHE_DISABLE=1 quietly "$work/copy/scripts/package.sh"
diff -r "$packages" "$work/copy/build/package/packages" || fail "the packages differ"
say "Each is the same to the byte"

# The path of a newcomer, which runs in the tree with the packages in /packages.
cat > "$work/newcomer.sh" <<'NEWCOMER'
set -euo pipefail
say()
{
    echo "--> $*"
}
export LC_ALL=C.UTF-8
doc=/usr/share/doc/zu
warnings="-Wall -Wextra -Wpedantic -Wold-style-cast -Wconversion -Wcast-qual -Werror"
rm -rf /root/newcomer
mkdir /root/newcomer
cd /root/newcomer

say "The first program, by pkg-config"
cc -std=c11 ${warnings/-Wold-style-cast/} $doc/examples/first.c $( pkg-config --cflags --libs zu ) -o first
./first | cmp - $doc/examples/expected/first.txt
c++ -std=c++17 $warnings $doc/examples/hello.cpp $( pkg-config --cflags --libs zu ) -o hello
./hello | cmp - $doc/examples/expected/hello.txt
cc -std=c11 $doc/examples/sort.c $( pkg-config --cflags --libs zu-static ) -o sort
./sort | cmp - $doc/examples/expected/sort.txt

say "The examples, by CMake"
cmake -S $doc/examples -B examples > /dev/null
cmake --build examples --parallel > /dev/null
ctest --test-dir examples --output-on-failure > ctest.log || { cat ctest.log; exit 1; }

say "A module from the template"
cp -r $doc/examples/module_template greeting
cmake -S greeting -B greeting/build > /dev/null
cmake --build greeting/build > /dev/null
ctest --test-dir greeting/build --output-on-failure > ctest.log || { cat ctest.log; exit 1; }

say "A string in gdb"
cc -g $doc/examples/first.c $( pkg-config --cflags --libs zu ) -o first
gdb -nx -batch -ex "set breakpoint pending on" -ex "break zuStringConvertToUtf8" -ex run -ex up -ex "print text" ./first \
    > gdb.log 2>&1 < /dev/null || true
grep -qF '"Hello, κόσμε! That is 5 letters, or 101 in binary."' gdb.log || { cat gdb.log; exit 1; }

say "The command"
zu --help > /dev/null
NEWCOMER

install_into_tree()
{
    # It is kept for the next run, which takes out what an earlier one has put in.
    if [ ! -e "$tree/complete" ]; then
        say "Making a Debian 12 tree: $tree"
        rm -rf "$tree"
        mkdir -p "$tree"
        as_root debootstrap --variant=minbase bookworm "$tree" "$mirror" > "$work/log" 2>&1 \
            || { tail "$work/log"; return 1; }
        # debootstrap knows no dependencies on one of several packages, as gdb has some.
        as_root chroot "$tree" env DEBIAN_FRONTEND=noninteractive apt-get --quiet --yes install --no-install-recommends \
            g++ cmake make pkg-config gdb < /dev/null > "$work/log" 2>&1 || { tail "$work/log"; return 1; }
        as_root touch "$tree/complete"
    fi
    as_root chroot "$tree" /bin/true || return 1
}
if install_into_tree; then
    say "Installing the packages in $tree"
    as_root rm -rf "$tree/packages"
    as_root cp -r "$packages" "$tree/packages"
    as_root cp "$work/newcomer.sh" "$tree/packages/newcomer.sh"
    # What is mounted goes with the namespace.
    as_root unshare --mount bash -c '
        set -euo pipefail
        mount -t proc proc "$1/proc"
        mount -t tmpfs tmpfs "$1/tmp"
        chroot "$1" sh -c "dpkg --purge zu libzu-dev libzu1-dbgsym zu-dbgsym libzu1 > /dev/null 2>&1 || true
            dpkg -i /packages/*deb"
        chroot "$1" bash /packages/newcomer.sh' - "$tree"
    say "The packages install in Debian 12, and serve there"
else
    say "NO Debian 12 tree can be made here: the packages are unpacked, and programs are built against that"
    for package in "$packages"/*deb; do
        dpkg-deb -x "$package" "$work/root"
    done
    export PKG_CONFIG_SYSROOT_DIR="$work/root"
    PKG_CONFIG_PATH="$( dirname "$( find "$work/root" -name zu.pc )" )"
    export PKG_CONFIG_PATH
    export PKG_CONFIG_ALLOW_SYSTEM_CFLAGS=1
    libraries="$( dirname "$PKG_CONFIG_PATH" )"
    read -ra flags <<< "$( pkg-config --cflags --libs zu )"
    for source in first.c hello.cpp; do
        g++ -x "$( [ "${source##*.}" = c ] && echo c || echo c++ )" "$ZU_ROOT/examples/$source" -x none "${flags[@]}" \
            -L"$libraries" -o "$work/program"
        LD_LIBRARY_PATH="$libraries" "$work/program" | cmp - "$ZU_ROOT/examples/expected/${source%.*}.txt"
    done
fi

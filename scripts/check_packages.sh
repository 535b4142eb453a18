#!/bin/bash
# Makes the Debian packages twice, and takes the path of a newcomer with them, where possible in a Debian 12 that has nothing
# else of this library.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/check_packages.sh

Builds the packages here and from a copy of the sources elsewhere, and compares them byte by byte; the one for whoever
looks for races is built once, since it takes as long as all others together.  Then follows README.md, by the very commands
of its part "From nothing to a running program", and builds and runs further programs, in C and in C++, with warnings as
errors, and under the thread sanitizer.

That happens in a Debian 12 tree, build/debian12, which mmdebstrap makes at the first run (as root).  Where none can be
made or entered, it says so and why, unpacks the packages into a folder, and does the same with what this machine has.
TEXT

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

# The tree is kept for the next run, which takes out what an earlier one has put in.  Making it is mostly waiting for what
# is downloaded, and so the packages are built meanwhile.
make_tree()
{
    # Where this is Debian 12 itself, its packages come from where they come from here.
    local -a sources=( http://deb.debian.org/debian )
    if grep -qs '^VERSION_CODENAME=bookworm$' /etc/os-release; then
        mapfile -t sources < <( find /etc/apt/sources.list.d /etc/apt/sources.list -type f \
            \( -name '*.list' -o -name '*.sources' \) -size +0 2> /dev/null )
    fi
    as_root rm -rf "$tree"
    mkdir -p "$( dirname "$tree" )"
    as_root mmdebstrap --variant=apt --include=g++,cmake,make,pkg-config,gdb bookworm "$tree" "${sources[@]}" < /dev/null \
        && as_root touch "$tree/complete"
}
if [ ! -e "$tree/complete" ]; then
    say "Making a Debian 12 tree: $tree"
    make_tree > "$work/tree.log" 2>&1 &
fi

say "Packages"
quietly "$ZU_ROOT/scripts/package.sh"
packages="$ZU_ROOT/build/package/packages"
ls -l "$packages"

say "The same packages from a copy of the sources"
mkdir "$work/copy"
tar -C "$ZU_ROOT" --exclude=./build --exclude=./.git -cf - . | tar -C "$work/copy" -xf -
CCACHE_DISABLE=1 quietly "$work/copy/scripts/package.sh" -DZU_BUILD_RACE_TWINS=OFF
diff -r -x 'libzu-race-dev_*' "$packages" "$work/copy/build/package/packages" || fail "the packages differ"
rm -rf "$work/copy"
say "Each is the same to the byte"

# What a newcomer has: the packages, the first program of README.md, and the commands that it tells.
newcomer="$work/newcomer"
mkdir "$newcomer"
cp "$packages"/*deb "$ZU_ROOT/tests/interface/race.c" "$newcomer"
awk '/^```c$/ { inside = 1; next } inside && /^```$/ { exit } inside' "$ZU_ROOT/README.md" > "$newcomer/first.c"
awk '/^## / { inside = /From nothing/; next } inside && sub( /^    /, "" )' "$ZU_ROOT/README.md" > "$newcomer/readme.sh"
grep -q '^int main' "$newcomer/first.c" && grep -q '^apt install ' "$newcomer/readme.sh" \
    || fail "README.md lacks the program or the commands"

# The path of a newcomer, in the folder of what he has.
cat > "$newcomer/newcomer.sh" <<'NEWCOMER'
set -euo pipefail
cd "$( dirname "$0" )"
export LC_ALL=C.UTF-8
root="${1:-}" # where the packages are unpacked; empty: they are installed
doc="$root/usr/share/doc/zu"
say()
{
    echo "--> $*"
}
# must_say <file> <text>
must_say()
{
    grep -qF -- "$2" "$1" || { cat "$1"; echo "It should say: $2"; exit 1; }
}

say "What README.md tells"
sed "s,/usr/share/doc,$root&,g${root:+; /^apt install\|^dpkg -i/d}" readme.sh > commands.sh
bash -euxo pipefail commands.sh > commands.log 2>&1 < /dev/null || { cat commands.log; exit 1; }
must_say commands.log "Hello, κόσμε! That is 5 letters, or 101 in binary. (19 more than before)"
must_say commands.log "100% tests passed"
if gdb -nx -batch -ex run /bin/true 2>&1 < /dev/null | grep -q "exited normally"; then
    must_say commands.log '= "Hello, κόσμε! That is 5 letters, or 101 in binary."'
else
    say "NO string in gdb, which may not run programs here"
fi

say "What the first program calls, in the reference"
for name in $( grep -o "zu[A-Z][A-Za-z0-9]*" first.c | sort -u ); do
    grep -rqF "'$name'" "$doc/reference/html/search" || { echo "The search does not find $name"; exit 1; }
done

say "Programs by pkg-config, with warnings as errors"
warnings="-Wall -Wextra -Wpedantic -Wconversion -Wcast-qual -Werror"
# must_print <example> <command>...
must_print()
{
    "${@:2}" > output
    cmp output "$doc/examples/expected/$1.txt"
}
c++ -std=c++17 $warnings -Wold-style-cast "$doc/examples/hello.cpp" $( pkg-config --cflags --libs zu ) -o hello
must_print hello ./hello
cc -std=c11 $warnings "$doc/examples/sort.c" $( pkg-config --cflags --libs zu-static ) -o sort
must_print sort ./sort

zu --version > version
must_say version "$( pkg-config --modversion zu )"

say "The examples, by CMake"
cmake -S "$doc/examples" -B examples > /dev/null
cmake --build examples --parallel > /dev/null
ctest --test-dir examples --output-on-failure > ctest.log || { cat ctest.log; exit 1; }

say "Under the thread sanitizer: threads that hand on objects, without a report, and a race, with one"
if [ -z "$root" ]; then
    apt install ./libzu-race-dev_*.deb > apt.log 2>&1 || { cat apt.log; exit 1; }
fi
# gcc's thread sanitizer gives up under the widest randomisation of addresses; some containers forbid to turn it off.
fixed="setarch $( uname -m ) --addr-no-randomize"
$fixed true 2> /dev/null || fixed=
LD_LIBRARY_PATH=$( pkg-config --variable=libdir zu-tsan ) # would come first if it were set
export LD_LIBRARY_PATH
for name in service pool; do
    c++ -g "$doc/examples/$name.cpp" $( pkg-config --cflags --libs zu-tsan ) -o watched
    must_print $name $fixed ./watched 2> report || { cat report; exit 1; }
    [ ! -s report ] || { cat report; exit 1; }
done
mkdir twins
cat > twins/CMakeLists.txt <<'CMAKE'
cmake_minimum_required( VERSION 3.16 )
project( twins LANGUAGES C )
find_package( zu REQUIRED )
foreach( tool tsan helgrind )
    add_executable( ${tool} ../race.c )
    target_link_libraries( ${tool} zu::${tool} )
endforeach()
CMAKE
cmake -S twins -B twins/build > /dev/null
cmake --build twins/build > /dev/null
$fixed twins/build/tsan 2> report || true
must_say report "WARNING: ThreadSanitizer: data race"
LD_LIBRARY_PATH= twins/build/helgrind # it serves without valgrind, too
NEWCOMER

# in_tree <command of the shell> [argument...]: runs it with the tree as $1, and what is mounted goes with its namespace.
in_tree()
{
    local command="$1"
    shift
    as_root unshare --mount bash -c 'set -euo pipefail
        mount -t proc proc "$1/proc" 2> /dev/null || mount --rbind /proc "$1/proc"
        mount -t tmpfs tmpfs "$1/tmp"
        [ -e "$1/dev/null" ] || mount --rbind /dev "$1/dev"
        '"$command" - "$tree" "$@"
}
wait
if [ ! -e "$tree/complete" ]; then
    reason="mmdebstrap has made none: $( tail -n 3 "$work/tree.log" )"
elif ! in_tree 'chroot "$1" /bin/true' > "$work/log" 2>&1; then
    reason="it cannot be entered: $( tail -n 1 "$work/log" )"
else
    reason=
fi
if [ -z "$reason" ]; then
    say "A newcomer in $tree"
    in_tree 'cp -r "$2" "$1/tmp/newcomer"
        # "Continue?" is for people.
        echo "APT::Get::Assume-Yes true;" > "$1/etc/apt/apt.conf.d/99newcomer"
        chroot "$1" dpkg --purge zu libzu-race-dev libzu-dev libzu1-dbgsym zu-dbgsym libzu1 > /dev/null 2>&1 || true
        chroot "$1" bash /tmp/newcomer/newcomer.sh' "$newcomer"
    say "The packages install in Debian 12, and serve there"
else
    say "NO Debian 12 tree: $reason"
    say "A newcomer on this machine, with the packages unpacked into a folder"
    root="$work/root"
    for package in "$packages"/*deb; do
        dpkg-deb -x "$package" "$root"
    done
    PKG_CONFIG_PATH="$( dirname "$( find "$root" -name zu.pc )" )"
    LD_LIBRARY_PATH="$( dirname "$PKG_CONFIG_PATH" )"
    # gdb finds by itself what belongs to libraries of the system only.
    mkdir "$work/home"
    {
        echo "set debug-file-directory $root/usr/lib/debug"
        echo "source $( find "$root" -name 'libzu.so.*-gdb.py' )"
    } > "$work/home/.gdbinit"
    env PKG_CONFIG_PATH="$PKG_CONFIG_PATH" LD_LIBRARY_PATH="$LD_LIBRARY_PATH" CMAKE_PREFIX_PATH="$root/usr" \
        C_INCLUDE_PATH="$root/usr/include" CPLUS_INCLUDE_PATH="$root/usr/include" `# a system's, as in /usr` \
        PATH="$root/usr/bin:$PATH" HOME="$work/home" bash "$newcomer/newcomer.sh" "$root"
    # What they need is to be had, if this machine is a Debian 12 that knows of packages at all.
    if grep -qs '^VERSION_CODENAME=bookworm$' /etc/os-release && apt-cache show libc6-dev > /dev/null 2>&1; then
        quietly apt-get --simulate install "$packages"/*.deb
    fi
    say "The packages serve where they are unpacked; that they install was NOT tried"
fi

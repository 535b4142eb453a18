# What the scripts share: where the repository is, which packages a task needs, and how a preset is built.
# To be sourced by a bash script under `set -euo pipefail`.

ZU_ROOT="$( cd "$( dirname "${BASH_SOURCE[ 0 ]}" )/.." && pwd )"
export LC_ALL="${LC_ALL:-C.UTF-8}"

# Packages by task.  A task lists what it needs beyond the ones that it is named together with.
ZU_PACKAGES_build="g++ cmake ninja-build ccache pkg-config"
ZU_PACKAGES_test="libgtest-dev python3 perl unicode-data tzdata gdb"
ZU_PACKAGES_check="clang clang-format clang-tidy libclang-rt-14-dev valgrind binutils libbenchmark-dev"
ZU_PACKAGES_package="dpkg-dev file mmdebstrap doxygen python3 valgrind"
ZU_PACKAGES_abi="abigail-tools xz-utils"
ZU_PACKAGES_cross="g++-aarch64-linux-gnu g++-riscv64-linux-gnu qemu-user googletest"
ZU_PACKAGES_windows="g++-mingw-w64-x86-64-posix wine wine64 googletest"
ZU_PACKAGES_bench="libbenchmark-dev libicu-dev libglib2.0-dev qtbase5-dev libutf8proc-dev libunistring-dev libuv1-dev libmsgpack-dev libabsl-dev libapr1-dev python3"

# Messages go to standard output, ahead of what they announce.
if [ -t 1 ] && [ -z "${NO_COLOR:-}" ]; then
    ZU_BOLD=$'\033[1m' ZU_RED=$'\033[1;31m' ZU_PLAIN=$'\033[0m'
else
    ZU_BOLD='' ZU_RED='' ZU_PLAIN=''
fi
say()
{
    printf '%s==> %s%s\n' "$ZU_BOLD" "$*" "$ZU_PLAIN"
}
fail()
{
    printf '%s%s: %s%s\n' "$ZU_RED" "$( basename "$0" )" "$*" "$ZU_PLAIN" >&2
    exit 1
}

# usage "$@" <<TEXT: prints the text for --help; a script that takes no arguments refuses all others.
usage()
{
    local text
    text="$( cat )"
    case "${1:-}" in
        '') return ;;
        -h | --help) printf '%s\n' "$text"; exit 0 ;;
        *) printf '%s\n' "$text" >&2; fail "unknown argument: $1" ;;
    esac
}

# Runs a command as root: directly, or through sudo.
as_root()
{
    if [ "$( id -u )" -eq 0 ]; then
        "$@"
    elif command -v sudo > /dev/null; then
        sudo -- "$@"
    else
        fail "this needs root, and there is no sudo here; please run as root: $*"
    fi
}

# ensure_packages <task>...: installs those packages of the tasks that are missing, and does nothing if none is.
ensure_packages()
{
    local task package variable
    local -a missing=()
    if ! command -v apt-get > /dev/null || ! command -v dpkg-query > /dev/null; then
        say "This is no Debian: what the tasks \"$*\" need is taken to be here"
        return
    fi
    for task in "$@"; do
        variable="ZU_PACKAGES_$task"
        for package in ${!variable}; do
            if [ "$( dpkg-query --show --showformat '${db:Status-Status}' "$package" 2> /dev/null )" != installed ]; then
                missing+=( "$package" )
            fi
        done
    done
    if [ "${#missing[@]}" -eq 0 ]; then
        return
    fi
    say "Installing packages that are missing: ${missing[*]}"
    local -a apt=( env DEBIAN_FRONTEND=noninteractive apt-get --quiet --yes
        -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 -o Dpkg::Use-Pty=0 )
    as_root "${apt[@]}" update < /dev/null \
        || fail "apt-get update failed; is there a network, and a package source in /etc/apt?"
    as_root "${apt[@]}" install --no-install-recommends "${missing[@]}" < /dev/null \
        || fail "apt-get could not install: ${missing[*]}"
}

# The compiler cache needs a place that can be written, which a bare machine or container may not offer.
if [ -z "${CCACHE_DIR:-}" ] && { [ -z "${HOME:-}" ] || [ ! -w "$HOME" ]; }; then
    export CCACHE_DIR="$ZU_ROOT/build/ccache"
fi

# configure <preset> [cmake options]: a folder that was configured for another place is begun anew.
configure()
{
    local preset="$1"
    local cache="$ZU_ROOT/build/$preset/CMakeCache.txt"
    shift
    if [ -f "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$ZU_ROOT" "$cache"; then
        say "build/$preset belongs to a repository elsewhere, and is made anew"
        rm -rf "${ZU_ROOT:?}/build/$preset"
    fi
    say "Configuring: $preset"
    ( cd "$ZU_ROOT" && cmake --preset "$preset" "$@" )
}
# build <preset> [target...]
build()
{
    local preset="$1"
    shift
    say "Building: $preset"
    ( cd "$ZU_ROOT" && cmake --build --preset "$preset" ${1:+--target "$@"} )
}
# run_tests <preset> [ctest options]
run_tests()
{
    local preset="$1"
    shift
    say "Testing: $preset"
    ( cd "$ZU_ROOT" && ctest --preset "$preset" --parallel "$( nproc )" "$@" )
}

# install_and_move <preset>: installs what has been built into a temporary folder, $work, and moves it there, to $installed.
# Nothing of it may know where it was built or installed first.
install_and_move()
{
    local known
    work="$( mktemp -d )"
    trap 'rm -rf "$work"' EXIT
    cmake --install "$ZU_ROOT/build/$1" --prefix "$work/installed" > "$work/install.log" \
        || { cat "$work/install.log"; fail "the installation failed"; }
    installed="$work/moved here"
    mv "$work/installed" "$installed"
    if known="$( grep -rlE "$ZU_ROOT/build|$work/installed" "$installed/lib" --include='*.cmake' --include='*.pc' )"; then
        fail "bound to a place: $known"
    fi
}

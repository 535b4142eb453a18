#!/bin/bash
# Makes the Debian packages.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
if [[ "${1:-}" != -D* ]]; then
    usage "$@" <<'TEXT'
usage: scripts/package.sh [-D<option of CMake>...]

Builds the preset "package" and writes Debian packages to build/package/packages: the library (libzu1), what a developer
needs (libzu-dev), the command (zu), the library for whoever looks for races (libzu-race-dev), and the debugging
information of library and command (libzu1-dbgsym, zu-dbgsym).

The same sources give the same bytes: the packages tell SOURCE_DATE_EPOCH as their time, which is that of the last commit
where it is not set.  They name DEBFULLNAME and DEBEMAIL as their maintainer.
TEXT
fi

ensure_packages build package
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
    SOURCE_DATE_EPOCH="$( git -C "$ZU_ROOT" log -1 --format=%ct 2> /dev/null || echo 0 )"
fi
export SOURCE_DATE_EPOCH
# Whoever builds must not show in the modes of files.
umask 022
configure package "$@"
build package
build package zu_reference
rm -rf "$ZU_ROOT/build/package/packages"
say "Packaging"
( cd "$ZU_ROOT/build/package" && cpack -G DEB > packages.log 2>&1 ) \
    || { cat "$ZU_ROOT/build/package/packages.log"; fail "CPack failed"; }
cd "$ZU_ROOT/build/package/packages"
rm -rf _CPack_Packages
# In packages of debugging information CPack 3.25 takes the sums by the names that the files have here; and it has the twins
# for libraries that packages may depend on.
for package in *.ddeb libzu-race-dev_*.deb; do
    [ -e "$package" ] || continue
    dpkg-deb -R "$package" unpacked
    sed -i 's,  /.*-dbgsym/usr/,  usr/,' unpacked/DEBIAN/md5sums
    rm -f unpacked/DEBIAN/shlibs
    dpkg-deb --root-owner-group -Zxz --build unpacked "$package" > /dev/null
    rm -rf unpacked
done
ls -l

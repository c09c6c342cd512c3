#!/usr/bin/env bash
# Makes the Debian packages, installs them with dpkg into a scratch root, follows
# docs/writing-a-procedure.md to the letter against it, runs hvhost from it, and removes the packages.
set -euo pipefail
source_dir=$1
build_dir=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "$1"; exit 1; }
(cd "$work" && "${CPACK:-cpack}" -G DEB --config "$build_dir/CPackConfig.cmake" \
  -D CPACK_DEBIAN_COMPRESSION_TYPE=none -B "$work/packages" >log 2>&1) || { cat "$work/log"; exit 1; }

# A scratch root with the dpkg status of this machine, so that dependencies count as installed here only
# if they are. The packages' scripts run without chroot.
root=$work/root
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
cp /var/lib/dpkg/status "$root/var/lib/dpkg/status"
dpkg=(dpkg --root="$root" --log="$work/dpkg.log" --force-not-root --force-script-chrootless --path-include='/usr/*')
[ "$(id -u)" = 0 ] || dpkg=(fakeroot "${dpkg[@]}")
run_dpkg() { "${dpkg[@]}" "$@" >"$work/log" 2>&1 || { grep -v 'files list file' "$work/log"; exit 1; }; }
run_dpkg -i "$work"/packages/*.deb

# What each package needs of others, and one file that must be in it.
while read -r package file needed; do
  archive=$(echo "$work/packages/${package}"_*.deb)
  dpkg-deb -f "$archive" Depends | grep -E "(^|, )$needed" >/dev/null || fail "$package does not depend on $needed"
  dpkg-deb -c "$archive" >"$work/files"
  grep -q "/$file\$" "$work/files" || fail "$package has no $file"
  [ -s "$work/root/usr/share/doc/$package/copyright" ] || fail "$package has no copyright"
done <<'TABLE'
hvinteg hvinteg/libduckdb.so libgdal
hvinteg share/doc/hvinteg/THIRD-PARTY-LICENSES.txt libc6
hvinteg share/doc/hvinteg/LICENSE default-jre-headless
libhvinteg-dev include/hvinteg/runner/HVRunner.h hvinteg \(=
libhvinteg-dev include/hvinteg/datafile/FaultIds.h default-jdk
hvhost share/man/man1/hvhost-map-convert.1.gz hvinteg \(=
hvhost share/zsh/vendor-completions/_hvhost libc6
hvhost share/fish/vendor_completions.d/hvhost.fish libstdc
TABLE

# One ABI policy: SONAME, versions of the symbols, and what find_package accepts.
mapfile -t libraries < <(find "$work/root/usr" -name 'lib*.so.*' -type f)
[ "${#libraries[@]}" -eq 7 ] || fail "libraries: ${libraries[*]}"
for library in "${libraries[@]}"; do "$source_dir/scripts/check-exports" --versions "$library"; done
"$source_dir/packaging/third-party-licenses" --check "${libraries[@]}" "$work/root/usr/bin/hvhost"

export PREFIX=$work/root/usr
python3 "$source_dir/tests/package/follow_document.py" "$source_dir/docs/writing-a-procedure.md" "$work/document"
grep -q 'missing.csv' "$work/document/errors.txt" || fail "the engine's message is missing"

"$PREFIX/bin/hvhost" aggregate "$PREFIX/share/hvinteg/examples/penguins.csv" --by species --stat count --format csv \
  >"$work/penguins.csv"
grep -qx 'Adelie,152' "$work/penguins.csv" || { cat "$work/penguins.csv"; exit 1; }
zcat "$PREFIX/share/man/man1/hvhost-aggregate.1.gz" | grep -- 'aggregate the records of each group' >/dev/null ||
  fail "the man page is wrong"
bash -c ". '$PREFIX/share/bash-completion/completions/hvhost'; complete -p hvhost" | grep -q _hvhost ||
  fail "the completion is wrong"

# The archive of Java classes is made by the installation, and again when files of Java change.
archive=$(find "$root/usr" -name hvengine.jsa)
[ -s "$archive" ] || fail "the installation made no class archive"
VEXA_JVM_OPTIONS=-Xshare:on "$PREFIX/bin/hvhost" doctor >"$work/doctor" || fail "Java does not accept the class archive"
grep -q '^class archive .*/hvengine.jsa$' "$work/doctor" || fail "hvhost does not find the class archive"
rm -f "$archive"
dpkg-trigger --admindir="$root/var/lib/dpkg" --by-package=libc6 /usr/lib/jvm
run_dpkg --triggers-only hvinteg
[ -s "$archive" ] || fail "a change of Java makes no new class archive"
client=()
[ -z "$(ls "$work"/packages/hvinteg-cluster_*.deb 2>/dev/null)" ] || client=(hvinteg-cluster)
run_dpkg --remove "${client[@]}" hvhost libhvinteg-dev hvinteg
left=$(find "$root" -path "$root/usr/*" -type f)
[ -z "$left" ] || fail "the removal leaves files: $left"
echo "the Debian packages work"

#!/usr/bin/env bash
# Installs the build somewhere, moves it, and builds and runs the example against what is there:
# with find_package(hvinteg), and with pkg-config. Code in the documents must compile, too.
set -euo pipefail
source_dir=$1
build_dir=$2
cmake=${CMAKE:-cmake}
cxx=${CXX:-c++}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/moved
"$cmake" --install "$build_dir" --prefix "$work/first" >"$work/log" || { cat "$work/log"; exit 1; }
mv "$work/first" "$prefix"

# Every installed header compiles with the installed ones alone.
libdir=$(dirname "$(find "$prefix" -name hvinteg.pc)")/..
export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags hvinteg)
read -ra libraries < <(pkg-config --libs hvinteg)
(cd "$prefix/include/hvinteg" && find . -name '*.h' | sed 's/.*/#include "&"/') >"$work/all.cpp"
[ "$(wc -l <"$work/all.cpp")" -gt 40 ] || { echo "headers are missing"; exit 1; }
"$cxx" -std=c++20 -Wall -Wextra -Werror -fsyntax-only "${flags[@]}" "$work/all.cpp"

# Each piece of C++ in the documents is the body of a function that is given two paths.
awk '/^```cpp$/ { inside = 1; print "void piece" ++pieces "(std::string input, std::string output)\n{"; next }
     /^```$/ && inside { inside = 0; print "}"; next }
     inside' "$source_dir/README.md" "$source_dir/docs/writing-a-procedure.md" >"$work/pieces"
[ "$(grep -c '^void piece' "$work/pieces")" -ge 2 ] || { echo "the documents have no code"; exit 1; }
cat "$work/all.cpp" "$work/pieces" >"$work/documents.cpp"
"$cxx" -std=c++20 -fsyntax-only "${flags[@]}" "$work/documents.cpp"

run_example() {
  "$1" "$source_dir/examples/data/weather.csv" "$work/$2.csv" >"$work/$2.hvl"
  grep -q 'filterRecords' "$work/$2.hvl" || { echo "$2: no job text"; exit 1; }
  head -n 1 "$work/$2.csv" | grep -qx 'weather,days,mean_high,wind_p90' || { cat "$work/$2.csv"; exit 1; }
  [ "$(wc -l <"$work/$2.csv")" -eq 6 ] || { cat "$work/$2.csv"; exit 1; }
}

"$cmake" -G Ninja -S "$source_dir/examples/procedure" -B "$work/example" -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_COMPILER="$cxx" >"$work/log" || { cat "$work/log"; exit 1; }
"$cmake" --build "$work/example" >"$work/log" || { cat "$work/log"; exit 1; }
run_example "$work/example/procedure" find_package

"$cxx" -std=c++20 "${flags[@]}" "$source_dir/examples/procedure/procedure.cpp" \
  -o "$work/by_pkg_config" "${libraries[@]}" -Wl,-rpath,"$libdir"
run_example "$work/by_pkg_config" pkg_config
cmp "$work/find_package.csv" "$work/pkg_config.csv"

# hvhost runs from where it was moved to.
"$prefix/bin/hvhost" doctor >"$work/doctor" || { cat "$work/doctor"; exit 1; }
grep -q "^installation .*$prefix/" "$work/doctor" || { cat "$work/doctor"; exit 1; }
echo "the installed tree builds and runs the example"

#!/usr/bin/env bash
# Installs the build into a folder with a blank in its name, moves it, and builds and runs the example
# against it with find_package(hvinteg). Each header and the code in the documents must compile.
set -euo pipefail
source_dir=$1
build_dir=$2
cmake=${CMAKE:-cmake}
cxx=${CXX:-c++}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix="$work/moved tree"
"$cmake" --install "$build_dir" --prefix "$work/first tree" >"$work/log" || { cat "$work/log"; exit 1; }
mv "$work/first tree" "$prefix"

# Every installed header compiles with the installed ones alone. pkg-config quotes the blank.
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name hvinteg.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2162
read -a flags < <(pkg-config --cflags hvinteg)
(cd "$prefix/include/hvinteg" && find . -name '*.h' | sed 's/.*/#include "&"/') >"$work/all.cpp"
[ "$(wc -l <"$work/all.cpp")" -gt 40 ] || { echo "headers are missing"; exit 1; }
# Each piece of C++ in the documents is the body of a function that is given two paths.
awk '/^```cpp$/ { inside = 1; print "void piece" ++pieces "(std::string input, std::string output)\n{"; next }
     /^```$/ && inside { inside = 0; print "}"; next }
     inside' "$source_dir/README.md" "$source_dir/docs/writing-a-procedure.md" >"$work/pieces"
[ "$(grep -c '^void piece' "$work/pieces")" -ge 2 ] || { echo "the documents have no code"; exit 1; }
cat "$work/all.cpp" "$work/pieces" >"$work/documents.cpp"
"$cxx" -std=c++20 -Wall -Wextra -Werror -Wno-unused-variable -Wno-unused-parameter -Wno-unused-but-set-parameter \
  -fsyntax-only "${flags[@]}" "$work/documents.cpp"

"$cmake" -G Ninja -S "$source_dir/examples/procedure" -B "$work/example" -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_COMPILER="$cxx" >"$work/log" || { cat "$work/log"; exit 1; }
"$cmake" --build "$work/example" >"$work/log" || { cat "$work/log"; exit 1; }
"$work/example/procedure" "$source_dir/examples/data/weather.csv" "$work/summary.csv" >"$work/job.hvl"
grep -q 'filterRecords' "$work/job.hvl" || { echo "no job text"; exit 1; }
head -n 1 "$work/summary.csv" | grep -qx 'weather,days,mean_high,wind_p90' || { cat "$work/summary.csv"; exit 1; }
[ "$(wc -l <"$work/summary.csv")" -eq 6 ] || { cat "$work/summary.csv"; exit 1; }

# hvhost runs from where it was moved to.
"$prefix/bin/hvhost" doctor >"$work/doctor" || { cat "$work/doctor"; exit 1; }
grep -q "^installation .*$prefix/" "$work/doctor" || { cat "$work/doctor"; exit 1; }
echo "the installed tree builds and runs the example"

#!/usr/bin/env bash
# Installs the build tree into a temporary prefix, moves the prefix elsewhere,
# and checks that what is installed works from there: the programs start and
# find their library and catalogue, nothing names the build machine's folders,
# and a CMake consumer, a pkg-config consumer and a C99 consumer build against
# the installed files and run.
#
#   install_test.sh BUILD_DIR SOURCE_DIR BINDIR LIBDIR INCLUDEDIR DATADIR MANDIR
#
# The *DIR arguments are the install folders relative to the prefix.  CMAKE,
# CC, CXX, CONSUMER_FLAGS (flags every consumer is compiled and linked with,
# such as the sanitizers the library was built with) and SANITIZED (not empty
# for a sanitizer build) come from the environment.
set -euo pipefail
build=$1 source=$2 bindir=$3 libdir=$4 includedir=$5 datadir=$6 mandir=$7
cmake=${CMAKE:-cmake}
flags=${CONSUMER_FLAGS:-}

work=$(mktemp -d "${TMPDIR:-/tmp}/kvcart-install-XXXXXX")
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "install test: $*" >&2; failures=$((failures + 1)); }

"$cmake" --install "$build" --prefix "$work/first" > "$work/install.log"
# Everything must work from wherever the tree is put.
mv "$work/first" "$work/moved"
prefix=$work/moved

for f in "$bindir/kvcart" "$bindir/kvcart-ellipsoids" "$libdir/libKvCart.so" \
         "$libdir/cmake/KvCart/KvCartConfig.cmake" "$libdir/cmake/KvCart/KvCartConfigVersion.cmake" \
         "$libdir/pkgconfig/kvcart.pc" "$includedir/KvCart/KvCart.h" \
         "$includedir/KvCart/mapproj/KvMapProjection.h" "$datadir/KvCart/ellipsoid.tsf" \
         "$datadir/KvCart/map_projection.tsf" "$mandir/man1/kvcart.1"; do
  [ -e "$prefix/$f" ] || fail "not installed: $f"
done
for f in platform/tsf.h platform/TsfInternal.h catalogue/KvParameterSetFactory.h; do
  [ ! -e "$prefix/$includedir/KvCart/$f" ] || fail "a private header is installed: $f"
done

# No file names the source or build folder (debug information included).  A
# sanitizer build is the one exception: UndefinedBehaviorSanitizer records the
# source file of each check as given to the compiler, which no prefix map
# reaches, so there the library's own source file names are allowed.
source_pattern=$(printf '%s' "$source" | sed 's/[][\/.^$*+?(){}|]/\\&/g')
while IFS= read -r file; do
  [ -n "$file" ] || continue
  while IFS= read -r path; do
    rest=${path#"$source/"}
    if [ -z "${SANITIZED:-}" ] || ! [[ $rest =~ ^(src|apps|include)/[A-Za-z0-9_/]+\.(cpp|h)$ ]]; then
      fail "a build path in $file: $path"
    fi
  done < <(grep -aoE "$source_pattern[^[:space:][:cntrl:]\"]*" "$file" | sort -u)
done < <(grep -rlF -e "$source" -e "$(cd "$build" && pwd)" "$prefix" || true)
for program in kvcart kvcart-ellipsoids; do
  runpath=$(readelf -d "$prefix/$bindir/$program" | sed -n 's/.*R\(UN\)\?PATH.*\[\(.*\)\]/\2/p')
  [ "$runpath" = "\$ORIGIN/$(realpath -m --relative-to="/$bindir" "/$libdir")" ] ||
    fail "$program has the run path '$runpath'"
done

# The installed programs, with nothing in the environment to help them.
clean_env=(env -u KVCART_DATA_DIR -u KVCART_USER_DIR -u LD_LIBRARY_PATH HOME="$work/home")
out=$("${clean_env[@]}" "$prefix/$bindir/kvcart" info UTM-32) || fail "kvcart info UTM-32 failed"
grep -q "^Name: *UTM-32" <<< "$out" || fail "kvcart info UTM-32 printed: $out"
out=$("${clean_env[@]}" "$prefix/$bindir/kvcart-ellipsoids") || fail "kvcart-ellipsoids failed: $out"
grep -q "ellipsoids from $prefix/$datadir/KvCart/ellipsoid.tsf" <<< "$out" ||
  fail "kvcart-ellipsoids read another catalogue: $(tail -1 <<< "$out")"
version=$("${clean_env[@]}" "$prefix/$bindir/kvcart" --version) || fail "kvcart --version failed"
# A copy of the program elsewhere still finds the catalogue beside the library.
mkdir "$work/elsewhere"
cp "$prefix/$bindir/kvcart" "$work/elsewhere/"
"${clean_env[@]}" LD_LIBRARY_PATH="$prefix/$libdir" "$work/elsewhere/kvcart" list --match UTM-32 \
  > /dev/null || fail "a copied kvcart does not find the catalogue beside the library"

if command -v groff > /dev/null; then
  warnings=$(groff -man -ww -z "$prefix/$mandir/man1/kvcart.1" 2>&1)
  [ -z "$warnings" ] || fail "man page: $warnings"
fi

# Every installed header compiles on its own terms, in one C++17 unit.
find "$prefix/$includedir/KvCart" -name '*.h' | sed 's/.*/#include "&"/' > "$work/headers.cpp"
"${CXX:-c++}" -std=c++17 -fsyntax-only -Wall -Wextra -Werror -I"$prefix/$includedir/KvCart" \
  "$work/headers.cpp" || fail "the installed headers do not compile"

# The consumers.
consumer() {  # name, source folder, language flags variable
  "$cmake" -S "$2" -B "$work/$1" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_C_COMPILER="${CC:-cc}" -DCMAKE_CXX_COMPILER="${CXX:-c++}" \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
    > "$work/$1.log" 2>&1 && "$cmake" --build "$work/$1" >> "$work/$1.log" 2>&1 ||
    { cat "$work/$1.log" >&2; fail "$1 does not build"; return; }
  "${clean_env[@]}" "$work/$1/$1" || fail "$1 failed"
}
consumer cmake_consumer "$source/tests/install/cmake_consumer"
consumer c99_consumer "$source/tests/install/c99_consumer"

export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
# shellcheck disable=SC2046
"${CXX:-c++}" -std=c++17 $flags "$source/tests/install/pkgconfig_consumer.cpp" \
  $(pkg-config --cflags --libs kvcart) -Wl,-rpath,"$(pkg-config --variable=libdir kvcart)" \
  -o "$work/pkgconfig_consumer" || fail "pkgconfig_consumer does not build"
[ -x "$work/pkgconfig_consumer" ] &&
  { "${clean_env[@]}" "$work/pkgconfig_consumer" "$(pkg-config --variable=pkgdatadir kvcart)" ||
    fail "pkgconfig_consumer failed"; }
[ "$version" = "kvcart $(pkg-config --modversion kvcart) (library $(pkg-config --modversion kvcart))" ] ||
  fail "kvcart --version says '$version', pkg-config $(pkg-config --modversion kvcart)"

[ "$failures" -eq 0 ] && echo "install test: all checks passed"
exit "$failures"

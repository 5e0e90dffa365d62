#!/usr/bin/env bash
# Packs what is shipped for Windows, unpacks it in another place and runs it there.
set -euo pipefail
tree=$(cd "$(dirname "$0")/../.." && pwd)
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

archive=$tree/$("$tree/tools/windows/package" | tail -n 1)
mkdir "$place/été à l'atelier"
cd "$place/été à l'atelier"
cmake -E tar xf "$archive"
cd morvex-windows

version=$("$tree/tools/windows/run" rostrum.exe --version)
[[ $version == "rostrum "* ]] || { echo "rostrum --version says: $version"; exit 1; }
"$tree/tools/windows/run" rostrum.exe --check 'plug-ins\morvex.aex' >report.txt ||
  { cat report.txt; exit 1; }
grep -q '^nothing was found' report.txt
for file in "how to install.txt" licences/LICENSE licences/image-formats/LGPL-2.1-or-later.txt \
  licences/compiler/gcc-mingw-w64-base.txt licences/compiler/mingw-w64-x86-64-dev.txt; do
  [ -s "$file" ] || { echo "the archive has no $file"; exit 1; }
done
grep -rq 'GNU LESSER GENERAL PUBLIC LICENSE' licences/qt ||
  { echo "the archive has no licence of Qt"; exit 1; }
echo "the archive was unpacked and run"

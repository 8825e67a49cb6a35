#!/usr/bin/env bash
# Where Wine is and how it is called here. Sourced, not run.

cache_dir=${XDG_CACHE_HOME:-$HOME/.cache}/shorttest
cross_prefix_link=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/build/windows-prefix

# The usual "wine" command asks for the 32-bit part, which nothing here needs.
wine_program=/usr/lib/wine/wine64
wine_server=/usr/lib/wine/wineserver64

use_wine() {
  export WINEPREFIX=$cache_dir/wine
  export WINEDEBUG=${WINEDEBUG:--all}
  # No menu entries, no offers to download a browser engine or a .NET replacement.
  export WINEDLLOVERRIDES="winemenubuilder.exe=;mscoree=;mshtml="
  export WINESERVER=$wine_server
  # Wine takes the user's country from here; file names are in UTF-8.
  export LC_ALL=C.UTF-8
  # The toolkit's DLLs.
  export WINEPATH="Z:$cross_prefix_link/lib/gcc_x64_dll"
}

# Shared by the scripts: where the project is, messages, packages. Sourced, not run.
set -euo pipefail

project_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$project_dir"

say() { printf '\n==> %s\n' "$*" >&2; }

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 2
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs the Debian packages that are missing; asks the network only when one is.
need_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && return 0
  command -v apt-get >/dev/null || die "needs the Debian packages ${missing[*]}, and there is no apt-get to install them"
  say "installing ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

need_build_packages() {
  need_packages g++ cmake ninja-build libcli11-dev libeigen3-dev libwxgtk3.2-dev libgtest-dev libgmock-dev binutils
}

# configure_and_build PRESET [TARGET...]
configure_and_build() {
  local preset=$1
  shift
  local launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  say "building ($preset)"
  cmake --preset "$preset" "${launcher[@]}" >/dev/null
  if [ $# -gt 0 ]; then
    cmake --build --preset "$preset" --target "$@"
  else
    cmake --build --preset "$preset"
  fi
}

# made_again_the_same SYSTEM FILE: packs once more; the same sources must make the same bytes.
made_again_the_same() {
  local before=$2.before
  cp "$2" "$before"
  scripts/package "$1" >/dev/null
  cmp "$2" "$before" || die "the package differs from time to time"
  rm "$before"
}

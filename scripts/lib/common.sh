# Shared by the scripts: where the project is, messages, packages. Sourced, not run.
set -euo pipefail

project_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$project_dir"

# say STEP: begins a step. Where steps are timed (time_steps), also of those that this script calls, it says how long the
# last one took.
say() {
  if [ -n "${SHORTTEST_STEPS:-}" ]; then
    step_table | tail -n 2 | sed -n '1s/^/    /p' >&2
    printf '%s\t%s\n' "$EPOCHSECONDS" "$*" >>"$SHORTTEST_STEPS"
  fi
  printf '\n==> %s\n' "$*" >&2
}

# time_steps: a table of all steps from here on, and how long each took, is the last that this script writes.
time_steps() {
  outer_steps=${SHORTTEST_STEPS:-}
  SHORTTEST_STEPS=$(mktemp)
  export SHORTTEST_STEPS
  trap 'end_steps $?' EXIT
}

end_steps() {
  [ -z "$outer_steps" ] || cat "$SHORTTEST_STEPS" >>"$outer_steps"
  printf '\n==> time of each step%s\n' "$([ "$1" = 0 ] || printf ' until the failure')"
  step_table
  rm -f "$SHORTTEST_STEPS"
}

# The steps so far, a line each with its minutes and seconds; the last line is the sum.
step_table() {
  awk -F '\t' -v now="$EPOCHSECONDS" '
    function line(seconds, name) { printf "%4d:%02d  %s\n", seconds / 60, seconds % 60, name }
    NR == 1 { first = $1 }
    NR > 1 { line($1 - start, name) }
    { start = $1; name = $2 }
    END { if (NR > 0) { line(now - start, name); line(now - first, "all") } }' "$SHORTTEST_STEPS"
}

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 2
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# The Debian packages that the scripts install, by what they are for.
build_packages=(g++ cmake ninja-build libcli11-dev libeigen3-dev libwxgtk3.2-dev libgtest-dev libgmock-dev binutils
  nlohmann-json3-dev libyaml-cpp-dev libpugixml-dev libsoci-dev libsqlite3-dev libpq-dev)
# Screen, window manager, keys, locales; a browser, a database server and a reader of JSON Schema.
test_packages=(xvfb xauth openbox x11-utils xdotool locales fonts-dejavu-core chromium postgresql python3-jsonschema)
lint_packages=(clang-format clang-tidy cppcheck)
coverage_packages=(python3)
# For sanitizers, fuzz targets and coverage; llvm counts, and names the functions of what leaks.
clang_packages=(clang libclang-rt-14-dev lld llvm)
benchmark_packages=(libbenchmark-dev gnuplot-nox python3)
picture_packages=(imagemagick)
deb_packages=(dpkg-dev file)
windows_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine64 fonts-wine
  fonts-liberation xvfb xauth googletest libcli11-dev libeigen3-dev nlohmann-json3-dev dpkg-dev xz-utils
  gcc libc6-dev make tcl zip unzip clang lld)

# need_packages PACKAGE...: installs those that are missing; asks the network only when one is.
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

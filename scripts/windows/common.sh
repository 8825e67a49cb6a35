#!/usr/bin/env bash
# Shared by the scripts for Windows. Sourced, not run.
source "$(dirname "${BASH_SOURCE[0]}")/../lib/common.sh"
source "$project_dir/scripts/windows/wine.sh"

# version_of PACKAGE: the version that is installed, or the one that would be
version_of() {
  local version
  version=$(dpkg-query -W -f '${Version}' "$1" 2>/dev/null) || true
  [ -n "$version" ] || version=$(apt-cache policy "$1" | sed -n 's/^ *Candidate: //p')
  [ -n "$version" ] && [ "$version" != "(none)" ] || die "no Debian package $1 known (apt-get update?)"
  printf '%s' "$version"
}

# source_version_of PACKAGE: that of its sources, which a mere rebuild of the package ("+b1") leaves alone
source_version_of() {
  version_of "$1" | sed -E 's/\+b[0-9]+$//'
}

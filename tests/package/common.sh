# Shared by the tests of the packages. Sourced, not run. They set:
#   kxbench  the command that starts the packed program (array)
#   work     an empty folder for the test's own files

fail() { die "the package: $*"; }

# bench EXPECTED-STATUS ARGUMENT...: runs the packed program; what it writes is in the files output and errors.
bench() {
  local expected=$1 status=0
  shift
  "${kxbench[@]}" "$@" >"$work/output" 2>"$work/errors" </dev/null || status=$?
  [ "$status" = "$expected" ] || { cat "$work/output" "$work/errors" >&2; fail "kxbench $*: status $status, not $expected"; }
}

# expect_text output|errors TEXT
expect_text() { grep -qF -- "$2" "$work/$1" || { cat "$work/$1" >&2; fail "$1 without '$2'"; }; }

# Every file that the documents of this folder name, pictures among them, is there.
check_links() {
  local document link
  while IFS=: read -r document link; do
    [ -e "$(dirname "$document")/$link" ] || fail "$document names $link, which is not there"
  done < <(grep -oE '\]\([^)#: ]+' README.txt docs/*.md examples/*.md | grep -v '\](\.\./' | sed 's/\](//')
}

# check_demo EXAMPLE NEW-FILE: checks a good device and a faulty one of an example, learns, runs a script.
check_demo() {
  local example=$1 learned=$2 device
  local command variables
  command=$(IFS=';'; printf '%s' "${kxbench[*]}")
  variables=("-DKXBENCH=$command" "-DEXPECTATION=$example/${example##*/}.dat")
  for device in good short-between-nets; do
    cmake "${variables[@]}" "-DDEVICE=$example/$device.device" -P "$project_dir/tests/program/CheckExample.cmake"
  done
  cmake "${variables[@]}" "-DDEVICE=$example/good.device" "-DLEARNED=$learned" -P "$project_dir/tests/program/LearnExample.cmake"
  bench 0 --device "$example/good.device" --project "$example/${example##*/}" run "$example/check.kxs"
  bench 0 info
  expect_text output "Command 10020:"
}

# check_other_driver EXAMPLE: somebody else's driver, which the caller has put in front, is used, and the simulated one
# is not. FOREIGN_TRACE and BRENMOR_TRACE tell the two where to write down their calls: in $work, foreign and simulated.
check_other_driver() {
  local example=$1
  rm -f "$work/foreign" "$work/simulated"
  bench 1 --device "$example/good.device" check "$example/${example##*/}.dat"
  expect_text output "fehlende Verbindung"
  [ ! -e "$work/simulated" ] || fail "the simulated driver is used beside another"
  diff -u - <(head -n 8 "$work/foreign") <<'END' || fail "the calls of a check"
bus_delete_error
bus_write 128 0 64
bus_write 129 0 64
bus_write 128 0 64
bus_write 128 0 176
bus_write 128 0 178
bus_write 129 0 64
bus_write 129 0 177
END
  FOREIGN_ERROR=1 bench 2 check "$example/${example##*/}.dat"
  grep -qx 'free_mem 0' "$work/foreign" || fail "the driver's text is not given back"
}

# check_simulated_driver EXAMPLE: without another, the simulated driver is used.
check_simulated_driver() {
  rm -f "$work/simulated"
  bench 0 --device "$1/good.device" check "$1/${1##*/}.dat"
  [ -s "$work/simulated" ] || fail "the simulated driver is not used without another"
}

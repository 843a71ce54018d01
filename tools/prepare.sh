# shellcheck shell=bash
# Shared by ./play, ./board and ./check: gets a machine ready and builds a preset. To be sourced from the
# project's folder. Nothing here writes to standard output, which belongs to the game, or reads
# standard input, which may hold its moves.

say() {
  printf '%s\n' "$*" >&2
}

# Runs a command, and shows what it printed only when it fails.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 </dev/null || status=$?
  [ $status -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return $status
}

has_command() {
  command -v "$1" >/dev/null 2>&1
}

has_header() {
  has_command g++ && echo "#include <$1>" | g++ -x c++ -std=c++20 -E - >/dev/null 2>&1
}

# Names the packages without which nothing can be built.
missing_to_build() {
  has_command g++ || echo g++
  has_command cmake || echo cmake
  has_command ninja || echo ninja-build
}

# And those without which the board in the browser is left out.
missing_to_build_board() {
  has_header boost/beast/version.hpp || echo libboost-dev
  has_header nlohmann/json_fwd.hpp || echo nlohmann-json3-dev
}

# Installs the named packages; with no names there is nothing to do.
install_packages() {
  [ $# -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
  fi
  if ! has_command apt-get || ! has_command "${as_root[0]:-apt-get}"; then
    say "Please install first (names as in Debian): $*"
    return 1
  fi
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
  say "Installing $* ..."
  # A package list that cannot be renewed may still be good enough.
  quietly "${apt[@]}" update || true
  quietly "${apt[@]}" install -y --no-install-recommends "$@"
}

# Configures and builds a preset, or only the named targets of it, one such run at a time.
build_preset() {
  local preset=$1
  shift
  [ -d "build/$preset" ] || say "Building the preset '$preset' ..."
  mkdir -p build
  (
    flock 9
    quietly cmake --preset "$preset" && quietly cmake --build --preset "$preset" ${1:+--target "$@"}
  ) 9>build/.lock
}

# Sourced by ./run, ./test, ./prove and ./bench: what this machine lacks is named and installed, then the build is brought up
# to date. A second call finds everything done.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-serialport-dev libcli11-dev nlohmann-json3-dev libtomlplusplus-dev
                libgtest-dev libgmock-dev libbenchmark-dev rpcsvc-proto libtirpc-dev qt6-svg-dev qt6-charts-dev
                libqt6opengl6-dev libxcb-xtest0-dev libqt6sql6-sqlite libqt6sql6-psql libzstd-dev libsodium-dev sqlite3 fonts-nanum groff-base
                qt6-l10n-tools qt6-tools-dev)
# A display and window managers for the windows' tests; a server for the records'; clients that nobody here wrote: the wires are held against them.
foreign_packages=(python3 python3-pyvisa python3-pyvisa-py lxi-tools python3-serial socat sigrok-cli rpcbind iproute2 xvfb openbox icewm postgresql-15
                  dbus at-spi2-core python3-pyatspi weasyprint)

install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing with apt: ${missing[*]}" >&2
  local sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  "${sudo[@]}" apt-get update -qq >&2
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET...]: quiet when there is nothing to do or all goes well; what the tools say otherwise.
build() {
  local preset=$1
  shift
  local log="$root/build/$preset.log"
  mkdir -p "$root/build"
  cd "$root"
  if [ ! -f "build/$preset/build.ninja" ]; then
    echo "Configuring build/$preset ..." >&2
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
  fi
  if ! ninja -C "build/$preset" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    echo "Building build/$preset ..." >&2
    if [ -t 2 ]; then
      ninja -C "build/$preset" "$@" >&2
    else
      ninja -C "build/$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
    fi
  fi
}

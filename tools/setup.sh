# Sourced by ./run and ./test: which Debian packages are wanted, and how missing ones are installed.

build_packages=(
  g++ cmake ninja-build pkg-config ccache mold
  qt6-base-dev libxcb1-dev libxcb-shape0-dev libcubeb-dev libmpg123-dev libvorbis-dev libsndfile1-dev libopenmpt-dev libsoxr-dev libtag1-dev
  libflac-dev libopusfile-dev libwavpack-dev libavformat-dev libavcodec-dev libavutil-dev
)
run_packages=(
  libqt6widgets6 qt6-qpa-plugins qt6-wayland fonts-dejavu-core fonts-dejavu-extra xvfb
)
test_packages=(
  clang clang-format clang-tidy libclang-rt-14-dev libgtest-dev libgmock-dev
  opus-tools wavpack ffmpeg musepack-tools
  tint2 dbus python3-dbusmock gir1.2-gtk-3.0 python3-gi libglib2.0-bin weston
  python3 librsvg2-bin xvfb openbox xdotool x11-utils x11-xserver-utils imagemagick pulseaudio pulseaudio-utils
)

bench_packages=(
  python3-numpy lame vorbis-tools xvfb xauth
)

# Installs those of the named packages that are missing. Ends the script with a clear message where that can't be done.
ensure_packages() {
  command -v dpkg-query >/dev/null || {
    echo "velmo: this is no Debian system; these packages or their like are needed: $*" >&2
    return 0
  }
  local missing
  missing=$(comm -23 <(printf '%s\n' "$@" | sort -u) \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort -u))
  [ -n "$missing" ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "velmo: these packages are missing, and neither root nor sudo is there to install them:" >&2
      echo "  apt-get install --no-install-recommends" $missing >&2
      exit 1
    }
    as_root=(sudo)
  fi
  echo "velmo: installing" $missing >&2
  # shellcheck disable=SC2086 # a list of names
  {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=120 update -q &&
      "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -o DPkg::Lock::Timeout=120 -q -y --no-install-recommends $missing
  } >&2 </dev/null || {
    echo "velmo: the packages above could not be installed" >&2
    exit 1
  }
}

# Builds a preset; silent where there is nothing to do.
build_preset() { # preset, further arguments of cmake
  local preset=$1 dir=$top/build/$1
  shift
  if [ ! -f "$dir/build.ninja" ] || [ $# -gt 0 ]; then
    (cd "$top" && cmake --preset "$preset" "$@") >"$top/build/$preset.configure.log" 2>&1 || {
      cat "$top/build/$preset.configure.log" >&2
      exit 1
    }
  fi
  if ! ninja -C "$dir" -n 2>/dev/null | grep -q 'no work to do'; then
    ninja -C "$dir" >&2 || exit 1
  fi
}

# Sourced: ensure_packages NAME... installs what is missing of Debian's packages, without questions.
# On a system without apt-get it names what is missing and leaves the rest to the build's own messages.
ensure_packages() {
  if ! command -v apt-get >/dev/null 2>&1; then
    local tool missing=""
    for tool in cmake ninja c++ ccache; do
      command -v "$tool" >/dev/null 2>&1 || missing="$missing $tool"
    done
    if [ -n "$missing" ]; then
      echo "This system has no apt-get, and these programs are missing:$missing" >&2
      echo "Install what these Debian packages hold: $*" >&2
      exit 1
    fi
    echo "This system has no apt-get; the build needs what these Debian packages hold: $*" >&2
    return 0
  fi
  local package missing=()
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1 || ! sudo -n true 2>/dev/null; then
      echo "These packages are missing, and installing them needs root: ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo -n)
  fi
  echo "Installing: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}"
}

# What the program is built from.
build_packages=(cmake ninja-build g++ ccache qt6-base-dev qt6-svg-dev qt6-translations-l10n
  libgl-dev libpugixml-dev libxlsxwriter-dev libminizip-dev zlib1g-dev fonts-liberation
  libqt6svg6)
# What a Debian package is made with. fp-utils holds the compiler of Wendral.chm; without it the build
# goes on, and the help is its pages only.
deb_packages=(fp-utils python3 gzip dpkg-dev file fakeroot)
# What the tests need beside that; desktop-file-utils and appstream judge the files for the desktop,
# lintian is for the package itself and stays with packaging/README.md.
test_packages=(git clang-format clang-tidy locales xvfb xauth openbox dbus at-spi2-core python3-gi
  gir1.2-atspi-2.0 xdotool x11-utils poppler-utils cups python3-openpyxl
  fp-utils python3 desktop-file-utils appstream man-db)
# The second spreadsheet program that recalculates what we write: large, so only where CI asks for it.
ci_packages=(libreoffice-calc-nogui)

# shellcheck shell=bash
# What the commands in the root share: the packages that they need, the icon font, and the build.
# Sourced with "set -euo pipefail" in force.

stemhaven_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# By use, under Debian's and Ubuntu's names.
declare -A packages_for=(
    [build]="g++ cmake ninja-build qt6-base-dev qt6-tools-dev qt6-l10n-tools libqt6sql6-sqlite libpugixml-dev
             fonts-dejavu-core"
    [wayland]="qt6-wayland"
    [tests]="libgtest-dev libgmock-dev dbus-daemon sqlite3"
    [fuzz]="clang"
    [bench]="libbenchmark-dev libplist-dev python3 inotify-tools"
    [font]="npm ca-certificates"
)

icon_font=$stemhaven_root/build/fonts/Phosphor-Light.ttf
icon_font_package=@phosphor-icons/web@2.1.2
icon_font_member=package/src/light/Phosphor-Light.ttf
icon_font_sha256=a10ef7a0631da04626fca2eab921d14b391749fddfa3465749368f21b28fd46c

say() { printf '%s\n' "$*" >&2; }

fail() {
    say "$(basename "$0"): $*"
    exit 1
}

have() { command -v "$1" >/dev/null 2>&1; }

# --- Packages ---------------------------------------------------------------------------------------------------------

# Whether what a package brings is here. A tool counts wherever it comes from.
have_package() {
    case $1 in
    g++ | clang | cmake | npm | sqlite3 | dbus-daemon | python3) have "$1" && return ;;
    ninja-build) have ninja && return ;;
    esac
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# missing_packages_for USE...: each once.
missing_packages_for() {
    local use package
    for use in "$@"; do
        for package in ${packages_for[$use]}; do
            have_package "$package" || printf '%s\n' "$package"
        done
    done | sort --unique
}

# install_packages_for USE...: installs what is missing. Where there is no apt, names it and leaves it to the build to
# find what goes by other names there.
install_packages_for() {
    local -a missing
    mapfile -t missing < <(missing_packages_for "$@")
    ((${#missing[@]})) || return 0

    if ! have apt-get; then
        say "There is no apt here to ask for what Debian calls: ${missing[*]}"
    elif ((EUID != 0)) && ! have sudo; then
        say "There is neither root nor sudo here to install: ${missing[*]}"
        return 1
    else
        say "Installing: ${missing[*]}"
        apt_get update || say "The lists of packages could not be brought up to date; going by those that are here."
        apt_get install --no-install-recommends --yes "${missing[@]}"
    fi
}

apt_get() {
    local -a command=(env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0)
    ((EUID == 0)) || command=(sudo "${command[@]}")
    "${command[@]}" "$@" </dev/null >&2
}

# --- Icon font --------------------------------------------------------------------------------------------------------

# Puts the icon font into the build folder. Where that cannot be done, says so and goes on.
fetch_icon_font() {
    have_icon_font && return
    local problem="npm is missing"
    install_packages_for font || true
    have npm && problem=$(unpack_icon_font 2>&1) && return
    say "No icon font, so buttons will show text: ${problem:-npm could not fetch it}"
}

have_icon_font() {
    [[ -f $icon_font ]] && sha256sum --check --status <<<"$icon_font_sha256  $icon_font"
}

unpack_icon_font() (
    folder=$(dirname "$icon_font")
    rm -rf "$folder" && mkdir -p "$folder/unpack" && cd "$folder/unpack" || exit 1
    trap 'rm -rf "$folder/unpack"' EXIT
    timeout 300 npm pack "$icon_font_package" --silent --ignore-scripts --cache "$folder/unpack/cache" \
        --fetch-retries=1 --fetch-retry-mintimeout=1000 </dev/null >/dev/null || exit 1
    tar -xmzf ./*.tgz "$icon_font_member" && mv "$icon_font_member" "$icon_font" || exit 1
    have_icon_font && exit
    rm -f "$icon_font"
    echo "what npm fetched is not the file that was expected"
    exit 1
)

# --- Build ------------------------------------------------------------------------------------------------------------

# build PRESET: all targets of a preset, quietly: progress on a terminal, and what goes wrong.
build() (
    preset=$1
    folder=$stemhaven_root/build/$preset
    launcher=
    have ccache && launcher=ccache
    quiet=()
    [[ -t 2 ]] || quiet=(-- --quiet)

    say "Building Stemhaven ($preset)"
    cd "$stemhaven_root" && mkdir -p "$folder" || exit 1
    if ! cmake --preset "$preset" -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" >"$folder/configure.log" 2>&1; then
        cat "$folder/configure.log" >&2
        fail "the build could not be configured"
    fi
    ln -sfn "build/$preset/compile_commands.json" compile_commands.json
    cmake --build --preset "$preset" "${quiet[@]}" >&2 || fail "the build failed"
)

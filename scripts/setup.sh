# shellcheck shell=bash
# What demo, check and bench share: the packages, the samples and the quiet build. Sourced by bash from the root folder
# of the repository, with `set -euo pipefail` in force.

# One row a package: who needs it (build: every script; lint: only the linters), the Debian package, what it is for.
packageTable="
build  g++                  compiler
build  cmake                build
build  ninja-build          build
build  ccache               build
build  python3              checks of the repository
build  libsqlite3-dev       SQLite store
build  libcli11-dev         arguments of connectctl
build  nlohmann-json3-dev   JSON output of connectctl
build  libgtest-dev         tests
build  libgmock-dev         tests
build  libbenchmark-dev     benchmarks
build  libsodium-dev        protection of secrets for their user
build  libsecret-1-0        keys in the Secret Service, peer for the tests
build  dbus                 session bus for the tests
build  python3-dbus         Secret Service that the tests play
build  python3-gi           the same
build  openssh-client       client of SSH sessions, peer for the tests
build  desktop-file-utils   checks desktop files in the tests
build  qt6-base-dev         dialogs on the desktop
build  qt6-svg-dev          their drawings
build  xvfb                 screen for the tests
build  xauth                the same
build  fonts-noto-cjk       Chinese texts in the tests' screenshots
lint   clang                second compiler
lint   clang-format         layout
lint   clang-tidy           static analysis
"

say() { printf '%s\n' "$*"; }
fail() { printf '%s: %s\n' "${0##*/}" "$*" >&2; exit 1; }

# missing_packages KIND: the packages of that kind that dpkg does not have, one a line.
missing_packages() {
    local wanted package installed
    mapfile -t wanted < <(awk -v kind="$1" '$1 == kind { print $2 }' <<<"$packageTable")
    # dpkg-query fails on a name it never heard of, and lists the others all the same.
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null || true)
    for package in "${wanted[@]}"; do
        grep -qx "installed $package" <<<"$installed" || say "$package"
    done
}

# ensure_packages KIND...: installs what is missing, or names it and stops.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "not a Debian system; what stands in the table of scripts/setup.sh is taken for granted"
        return
    fi
    local kind missing=()
    for kind in "$@"; do
        mapfile -t -O "${#missing[@]}" missing < <(missing_packages "$kind")
    done
    (( ${#missing[@]} == 0 )) && return
    local root=()
    if (( EUID != 0 )); then
        sudo -n true 2>/dev/null || fail "please install these packages first: ${missing[*]}"
        root=(sudo -n)
    fi
    say "installing ${missing[*]}"
    local apt=("${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0)
    local log
    log=$(mktemp)
    # An update that fails (no network, but a filled cache) need not keep the installation from working.
    if ! { "${apt[@]}" update || true; "${apt[@]}" install --no-install-recommends -y "${missing[@]}"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "could not install: ${missing[*]}"
    fi
    rm -f "$log"
}

# find_samples: the folder with sample files of other programs, or nothing. Tests that read it are skipped without it.
find_samples() {
    if [[ -n ${CONNECTDIALOG_SAMPLES:-} ]]; then
        (cd "$CONNECTDIALOG_SAMPLES" && pwd) || fail "CONNECTDIALOG_SAMPLES is no folder: $CONNECTDIALOG_SAMPLES"
        return
    fi
    local folder
    for folder in ../*/samples ../../*/samples; do
        if [[ -d $folder/ssh_config ]]; then
            (cd "$folder" && pwd)
            return
        fi
    done
}

# run_quietly LOG COMMAND...: the output goes into LOG and is shown only when the command fails.
run_quietly() {
    local log=$1
    shift
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        fail "failed: $*"
    fi
}

configure() {
    local preset=$1 samples
    samples=$(find_samples)
    mkdir -p "build/$preset"
    run_quietly "build/$preset/configure.log" cmake --preset "$preset" -DCONNECTDIALOG_SAMPLES="$samples"
}

# build PRESET [TARGET...]: configures and builds; without a target everything.
build() {
    local preset=$1 started=$SECONDS
    shift
    say "building ($preset)"
    configure "$preset"
    local targets=()
    (( $# > 0 )) && targets=(--target "$@")
    run_quietly "build/$preset/build.log" cmake --build --preset "$preset" "${targets[@]}"
    say "built in $((SECONDS - started)) s"
}

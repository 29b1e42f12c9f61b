# Sourced by ./test, ./demo and .ci/run: what a fresh Debian machine lacks comes through apt-get.

say() { printf '%s\n' "$*"; }
have() { command -v "$1" >/dev/null 2>&1; }

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif have sudo; then
        sudo -n "$@"
    else
        return 1
    fi
}

apt_install() {
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "$@" </dev/null >>build/log/apt.log 2>&1
}

# install_missing <command or /pattern of files>:<package> ...: installs the packages whose command or
# file is not there. One that cannot be had does not keep the others away; the caller looks at what is
# there.
install_missing() {
    local pair thing packages=()
    for pair in "$@"; do
        thing=${pair%%:*}
        case $thing in
        /*) compgen -G "$thing" >/dev/null ;;
        *) have "$thing" ;;
        esac || packages+=("${pair#*:}")
    done
    [ ${#packages[@]} -gt 0 ] || return 0
    mkdir -p build/log
    say "installing ${packages[*]}"
    if have apt-get; then
        as_root apt-get update -qq </dev/null >>build/log/apt.log 2>&1
        apt_install "${packages[@]}" && return 0
        for pair in "${packages[@]}"; do
            apt_install "$pair" || say "could not install $pair (see build/log/apt.log)"
        done
    else
        say "no apt-get here: install ${packages[*]} by hand"
    fi
}

# quietly <name> <command...>: keeps the output in build/log/<name>.log and shows it on failure.
quietly() {
    local log=build/log/$1.log
    shift
    mkdir -p build/log
    "$@" >"$log" 2>&1 </dev/null && return 0
    cat "$log"
    say "failed: $*"
    return 1
}

BUILD_TOOLS=(g++:g++ cmake:cmake ninja:ninja-build strace:strace '/usr/lib/*/libgtest.a:libgtest-dev' /usr/src/googletest/CMakeLists.txt:googletest)
JAVA_TOOLS=(javac:default-jdk-headless)
WINDOWS_TOOLS=(cmark-gfm:cmark-gfm x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64 /usr/lib/wine/wine64:wine64 wine:wine)
export WINEPREFIX=${WINEPREFIX:-$PWD/build/wine} WINEDEBUG=${WINEDEBUG:--all}

# What the Windows build lacks on this machine, or nothing. Makes the Wine prefix of the build folder
# (some ten seconds, the first time), so that no test pays for it.
windows_build_lacks() {
    if ! have x86_64-w64-mingw32-g++-posix; then
        say "no MinGW-w64 compiler"
    elif ! have wine; then
        say "no Wine"
    elif [ ! -e "$WINEPREFIX/system.reg" ] &&
        ! WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe=' \
            quietly wine cmake/run_in_wine wineboot --init >/dev/null; then
        say "Wine does not start (see build/log/wine.log)"
    fi
}

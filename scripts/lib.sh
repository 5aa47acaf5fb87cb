# shellcheck shell=bash
# What ./dev is made of; sourced with the root of the tree as current folder. Messages go to standard error, so that
# the output of a program that is started through ./dev stays its own.

say()
{
    printf '%s\n' "$*" >&2
}

fail()
{
    printf 'dev: %s\n' "$*" >&2
    exit 1
}

# missing_packages <names>: prints those that are not installed.
missing_packages()
{
    local installed name
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    for name in "$@"; do
        grep -qxF "installed $name" <<<"$installed" || printf '%s\n' "$name"
    done
}

# need_packages <names>: installs what is missing. Whether that worked is asked of dpkg and not of apt-get, which also
# fails for reasons that do not matter here, such as one unreachable source among several.
need_packages()
{
    local missing as_root=()
    if ! command -v dpkg-query >/dev/null; then
        say "Not a Debian system: the equivalents of $* have to be there"
        return
    fi
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -gt 0 ]] || return 0

    if [[ $EUID -ne 0 ]]; then
        command -v sudo >/dev/null || fail "these packages are missing, and there is no sudo: ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)
    mkdir -p build
    {
        "${as_root[@]}" update || true
        "${as_root[@]}" install --no-install-recommends "${missing[@]}" || true
    } >build/apt.log 2>&1 </dev/null

    mapfile -t missing < <(missing_packages "$@")
    if [[ ${#missing[@]} -gt 0 ]]; then
        tail -n 20 build/apt.log >&2
        fail "apt-get could not install: ${missing[*]} (the whole output is in build/apt.log)"
    fi
}

# watched <what> <log> <command ...>: the command's output goes to the log, its progress to the terminal, and what it
# complained about is shown only when it fails.
watched()
{
    local what=$1 log=$2 started=$SECONDS
    shift 2
    if ! "$@" </dev/null 2>&1 | tee "$log" | show_progress "$what"; then
        grep -vE "$step" "$log" >&2 || true
        fail "$what failed; the whole output is in $log"
    fi
    ! grep -qE "$step" "$log" || say "$what: $((SECONDS - started)) s"
}

# Ninja numbers its steps, "[3/120] ...". A terminal sees them in one line that is overwritten and cleared in the end,
# a log only that there are any.
step='^\[[1-9][0-9]*/[0-9]+\]'
show_progress()
{
    local what=$1 line='' shown=''
    while IFS= read -r line; do
        [[ $line =~ $step ]] || continue
        if [[ -t 2 ]]; then
            printf '\r\033[K%s %s' "$what" "${BASH_REMATCH[0]}" >&2
        elif [[ -z $shown ]]; then
            say "$what"
        fi
        shown=yes
    done
    [[ -z $shown || ! -t 2 ]] || printf '\r\033[K' >&2
}

# All C++ files of the tree, each ended by a zero byte.
source_files()
{
    find . \( -path ./build -o -name '.?*' \) -prune -o -type f \( -name '*.h' -o -name '*.cpp' \) -print0
}

# shellcheck shell=bash
# The Windows SDK: Qt, SQLite and GoogleTest for 32-bit Windows, built once from Debian's source packages of the
# versions that are installed for this machine; sourced by ./dev. It lives outside the checkout, in
# ${XDG_CACHE_HOME:-~/.cache}/veridan/win32-sdk-<key>. VERIDAN_WIN32_SDK names a ready one instead.

sdk_packages=(g++-mingw-w64-i686-posix cmake ninja-build make qtbase5-dev libsqlite3-dev
    libgtest-dev libgmock-dev googletest tcl dpkg-dev xz-utils patch wine64 xvfb xauth)
sdk_stages=(lists sources wine sqlite googletest qt-configure qt-core qt-gui qt-platforms qt-network qt-install
    runtime)

# One SDK per set of versions and recipe.
sdk_key()
{
    {
        dpkg-query -W -f '${Package} ${source:Version}\n' qtbase5-dev-tools libsqlite3-dev \
            googletest g++-mingw-w64-i686-posix mingw-w64-i686-dev wine64
        cat scripts/windows/{qt-options,sdk-stage} cmake/win32-toolchain.cmake
    } | sha256sum | cut -c 1-12
}

# need_sdk: builds it when it is not there, and exports VERIDAN_WIN32_SDK.
need_sdk()
{
    local stage started=$SECONDS key lock
    need_packages "${sdk_packages[@]}"
    if [[ -n ${VERIDAN_WIN32_SDK-} ]]; then
        [[ -f $VERIDAN_WIN32_SDK/complete ]] || fail "VERIDAN_WIN32_SDK names no complete SDK: $VERIDAN_WIN32_SDK"
        return
    fi
    key=$(sdk_key)
    export VERIDAN_WIN32_SDK=${XDG_CACHE_HOME:-$HOME/.cache}/veridan/win32-sdk-$key
    [[ ! -f $VERIDAN_WIN32_SDK/complete ]] || return 0

    mkdir -p "$VERIDAN_WIN32_SDK"/{work,logs,stages}
    exec {lock}>"$VERIDAN_WIN32_SDK/lock"
    flock "$lock"
    if [[ ! -f $VERIDAN_WIN32_SDK/complete ]]; then
        say "Building the Windows SDK in $VERIDAN_WIN32_SDK; this happens once and takes a while"
        for stage in "${sdk_stages[@]}"; do
            sdk_stage "$stage"
        done
        rm -rf "$VERIDAN_WIN32_SDK/work"
        touch "$VERIDAN_WIN32_SDK/complete"
        say "The Windows SDK is ready after $(elapsed "$started")"
    fi
    exec {lock}>&-
}

sdk_stage()
{
    local stage=$1 log=$VERIDAN_WIN32_SDK/logs/$1.log done=$VERIDAN_WIN32_SDK/stages/$1 started=$SECONDS
    [[ ! -f $done ]] || return 0
    if ! scripts/windows/sdk-stage "$VERIDAN_WIN32_SDK" "$stage" </dev/null 2>&1 | tee "$log" | show_elapsed "$stage"; then
        tail -n 20 "$log" >&2
        fail "the SDK's stage '$stage' failed; the whole output is in $log"
    fi
    touch "$done"
    say "SDK, $stage: $(elapsed "$started")"
}

elapsed()
{
    printf '%d:%02d' $(((SECONDS - $1) / 60)) $(((SECONDS - $1) % 60))
}

# Reads a stage's output; a terminal sees the time and the number of compiled files change, a log sees a line a minute.
show_elapsed()
{
    local stage=$1 started=$SECONDS line files=0 shown=0 status
    while true; do
        status=0
        IFS= read -r -t 1 line || status=$?
        [[ $status -eq 0 || $status -gt 128 ]] || break
        [[ $status -ne 0 || $line != compiling* ]] || files=$((files + 1))
        if [[ -t 2 ]]; then
            printf '\r\033[KSDK, %s: %s, %d files' "$stage" "$(elapsed "$started")" "$files" >&2
        elif [[ $((SECONDS - started)) -ge $((shown + 60)) ]]; then
            shown=$((SECONDS - started))
            say "SDK, $stage: $(elapsed "$started"), $files files"
        fi
    done
    [[ ! -t 2 ]] || printf '\r\033[K' >&2
}

# shellcheck shell=bash
# ./dev windows <command>; sourced by ./dev, which sets $root and $called_from and ends at the first failure.
# shellcheck disable=SC2154,SC2164
source scripts/windows/sdk.sh

# One build folder; it starts afresh when the SDK is another.
windows_build()
{
    local stamp=build/win32/.sdk
    need_sdk
    if [[ -f $stamp && $(<"$stamp") != "$VERIDAN_WIN32_SDK" ]]; then
        rm -rf build/win32
    fi
    mkdir -p build/win32
    printf '%s\n' "$VERIDAN_WIN32_SDK" >"$stamp"
    build win32 "$@"
}

windows_test()
{
    windows_build
    xvfb-run -a ctest --preset win32 --parallel "$(nproc)" "$@"
}

windows_run()
{
    windows_build plugin/all devkit/all
    cd -- "$called_from"
    exec "$root/scripts/windows/wine" "$VERIDAN_WIN32_SDK" "$root/build/win32/bin/veridan-host.exe" "$@"
}

windows()
{
    local command=${1-}
    [[ $# -eq 0 ]] || shift
    case $command in
    sdk)
        need_sdk
        say "The Windows SDK is $VERIDAN_WIN32_SDK"
        ;;
    build) windows_build "$@" ;;
    test) windows_test "$@" ;;
    run) windows_run "$@" ;;
    check)
        need_packages clang
        windows_build
        scripts/windows/check "$root/build/win32"
        ;;
    package)
        need_packages zip unzip
        windows_build
        scripts/windows/package "$VERIDAN_WIN32_SDK" "$root/build/win32"
        ;;
    *) fail "windows: unknown command '$command'; ./dev help lists them" ;;
    esac
}

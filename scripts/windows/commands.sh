# shellcheck shell=bash
# ./dev windows <command>; sourced by ./dev, which sets $root and $called_from and ends at the first failure.
# shellcheck disable=SC2154,SC2164
source scripts/windows/sdk.sh

# windows_preset <preset> [targets]: its build folder starts afresh when the SDK is another.
windows_preset()
{
    local stamp=build/$1/.sdk
    need_sdk
    if [[ -f $stamp && $(<"$stamp") != "$VERIDAN_WIN32_SDK" ]]; then
        rm -rf "build/$1"
    fi
    mkdir -p "build/$1"
    printf '%s\n' "$VERIDAN_WIN32_SDK" >"$stamp"
    build "$@"
}

windows_build()
{
    windows_preset win32 "$@"
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
        windows_preset win32-check autogen
        scripts/windows/check "$root/build/win32-check"
        ;;
    package)
        need_packages zip unzip
        windows_build
        scripts/windows/package "$VERIDAN_WIN32_SDK" "$root/build/win32"
        ;;
    *) fail "windows: unknown command '$command'; ./dev help lists them" ;;
    esac
}

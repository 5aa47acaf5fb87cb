# shellcheck shell=bash
# ./dev lint; sourced by ./dev, which sets $root and $called_from and ends at the first failure.
# shellcheck disable=SC2154

# lint [--changed [commit] | files]: clang-tidy reads the sources as they are compiled, several at a time: matching the
# headers of libraries costs it most, and is spared that way. Nothing is compiled.
lint()
{
    local files units
    need_packages clang-tidy libbenchmark-dev
    build lint autogen
    case ${1-} in
    "") mapfile -t files < <(git ls-files '*.cpp') ;;
    --changed) mapfile -t files < <(changed_files "${2-HEAD}" | grep -E '\.(h|cpp)$') ;;
    -*) fail "lint: unknown argument '$1'" ;;
    *) mapfile -t files < <(cd -- "$called_from" && realpath --relative-to="$root" -- "$@") ;;
    esac
    mapfile -t units < <(units_of "${files[@]}")
    [[ ${#units[@]} -gt 0 ]] || { say "Nothing to lint"; return; }
    say "Linting ${#units[@]} groups of sources"
    printf '%s\0' "${units[@]}" |
        xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/lint --quiet --extra-arg=-Wno-unknown-warning-option \
            2> >(grep -vE ' warnings? (generated|treated as error)' >&2) ||
        fail "clang-tidy found something to mend"
}

# The files that differ from a commit, new ones among them.
changed_files()
{
    git diff --name-only --diff-filter=d "$1"
    git ls-files --others --exclude-standard
}

# units_of <files>: what is compiled with these files in it. For a header, one source that includes it stands for all.
units_of()
{
    local file all
    mapfile -t all < <(sed -n 's/^  "file": "\(.*\)",\{0,1\}$/\1/p' build/lint/compile_commands.json |
        grep '/unity_[0-9]*_cxx\.cxx$')
    for file in "$@"; do
        [[ $file != *.h ]] || file=$(git grep -lF "#include \"$file\"" -- '*.cpp' | head -n 1)
        [[ -z $file ]] || printf '"%s/%s"\n' "$root" "$file"
    done | grep -lFf - -- "${all[@]}" | sort -u
}

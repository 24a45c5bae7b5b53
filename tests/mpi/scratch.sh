# What the checks of many ranks begin with: a folder of their own, which goes when they end.

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail()
{
    echo "$1" >&2
    exit 1
}

# Puts the words in front of "--" into `programs`, and those behind it into `mpirun`.
take_programs()
{
    programs=()
    while [[ $1 != -- ]]; do
        programs+=("$1")
        shift
    done
    shift
    mpirun=("$@")
}

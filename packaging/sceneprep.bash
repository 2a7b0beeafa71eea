# Completion of sceneprep's commands, options and files for bash.

_sceneprep()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local mappings="planar-x planar-y planar-z cubic cylindrical spherical"
    local common="--help --quiet --memory-limit --no-isolation --plugin"
    local prepare="--output --keep-going --strict --json --report --all --resolve-instances --repair-mirrors
        --check-orientation --fix-culling --weld --normals --unify-normals --uvs --unique-names --flatten --min-surfaces
        --max-vertices --ignore-animation --surface-names --collision-offsets"
    local inspect="--json --tree"

    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "prepare inspect formats --help --version" -- "$word")
        return
    fi
    case $before in
        --uvs)
            mapfile -t COMPREPLY < <(compgen -W "$mappings" -- "$word")
            return
            ;;
        --memory-limit | --min-surfaces | --max-vertices) return ;;
    esac
    if [[ $word != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    case ${COMP_WORDS[1]} in
        prepare) mapfile -t COMPREPLY < <(compgen -W "$prepare $common" -- "$word") ;;
        inspect) mapfile -t COMPREPLY < <(compgen -W "$inspect $common" -- "$word") ;;
        formats) mapfile -t COMPREPLY < <(compgen -W "--help" -- "$word") ;;
    esac
}

complete -F _sceneprep sceneprep

# Completion of sceneprep's commands, options and files for bash.

_sceneprep()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--help --version prepare inspect batch formats" -- "$word")
        return
    fi
    case $before in
        --format)
            mapfile -t COMPREPLY < <(compgen -W "glb gltf" -- "$word")
            return
            ;;
        --uvs)
            mapfile -t COMPREPLY < <(compgen -W "planar-x planar-y planar-z cubic cylindrical spherical" -- "$word")
            return
            ;;
        --allow-loss | --budget | --jobs | --max-vertices | --memory-limit | --min-surfaces | --scene) return ;;
    esac
    if [[ $word != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    case ${COMP_WORDS[1]} in
        prepare) words="--help --output --in-place --dry-run --scene --external-textures --keep-going --quiet --memory-limit --no-isolation --plugin --all --resolve-instances --repair-mirrors --check-orientation --fix-culling --weld --normals --unify-normals --uvs --unique-names --flatten --min-surfaces --max-vertices --ignore-animation --surface-names --collision-offsets --strict --allow-loss --budget --json --report --depfile" ;;
        inspect) words="--help --scene --json --tree --budget --quiet --memory-limit --no-isolation --plugin" ;;
        batch) words="--help --output --format --jobs --print --collect --external-textures --quiet --memory-limit --no-isolation --plugin --all --resolve-instances --repair-mirrors --check-orientation --fix-culling --weld --normals --unify-normals --uvs --unique-names --flatten --min-surfaces --max-vertices --ignore-animation --surface-names --collision-offsets --strict --allow-loss --budget" ;;
        formats) words="--help" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _sceneprep sceneprep

# Completion of sceneprep's commands, options and files for bash.

_sceneprep()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--help --version prepare inspect compare batch formats" -- "$word")
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
        --allow-loss | --budget | --cell | --jobs | --keep | --keep-instances | --max-growth | --max-vertices | --memory-limit | --min-surfaces | --scene) return ;;
    esac
    if [[ $word != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    case ${COMP_WORDS[1]} in
        prepare) words="--help --output --in-place --dry-run --scene --external-textures --gpu-instancing --keep-going --quiet --memory-limit --no-isolation --plugin --all --resolve-instances --keep-instances --repair-mirrors --check-orientation --fix-culling --weld --normals --unify-normals --uvs --unique-names --flatten --min-surfaces --max-vertices --ignore-animation --keep --cell --surface-names --collision-offsets --no-repair-mirrors --no-weld --no-unique-names --no-flatten --no-surface-names --no-collision-offsets --strict --allow-loss --no-verify --max-growth --budget --json --report --depfile" ;;
        inspect) words="--help --scene --json --tree --budget --quiet --memory-limit --no-isolation --plugin" ;;
        compare) words="--help --json --quiet --memory-limit --no-isolation --plugin" ;;
        batch) words="--help --output --format --jobs --print --collect --external-textures --quiet --memory-limit --no-isolation --plugin --all --resolve-instances --keep-instances --repair-mirrors --check-orientation --fix-culling --weld --normals --unify-normals --uvs --unique-names --flatten --min-surfaces --max-vertices --ignore-animation --keep --cell --surface-names --collision-offsets --no-repair-mirrors --no-weld --no-unique-names --no-flatten --no-surface-names --no-collision-offsets --strict --allow-loss --no-verify --max-growth --budget" ;;
        formats) words="--help" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _sceneprep sceneprep

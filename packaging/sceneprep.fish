# Completion of sceneprep's commands, options and files for fish.

set -l commands prepare inspect formats
complete -c sceneprep -n "not __fish_seen_subcommand_from $commands" -f -a "$commands"
complete -c sceneprep -s h -l help -d "Print help"
complete -c sceneprep -n "not __fish_seen_subcommand_from $commands" -l version -d "Print the version"

set -l works "__fish_seen_subcommand_from prepare inspect"
complete -c sceneprep -n $works -l quiet -d "Tell neither progress nor notes"
complete -c sceneprep -n $works -l memory-limit -x -d "Memory that the work may take, in GiB"
complete -c sceneprep -n $works -l plugin -r -d "The plug-in to load"

set -l prepare "__fish_seen_subcommand_from prepare"
complete -c sceneprep -n $prepare -s o -l output -r -d "The model to write"
complete -c sceneprep -n $prepare -l keep-going -d "Leave out inputs that cannot be read"
complete -c sceneprep -n $prepare -l strict -d "Write nothing when the result shows another world"
complete -c sceneprep -n $prepare -l json -r -d "Write what was done"
complete -c sceneprep -n $prepare -l report -r -d "Write a page with numbers and pictures"
complete -c sceneprep -n $prepare -l all -d "The recommended road"
complete -c sceneprep -n $prepare -l resolve-instances -d "Give every surface a mesh of its own"
complete -c sceneprep -n $prepare -l repair-mirrors -d "Take mirroring out of nodes"
complete -c sceneprep -n $prepare -l check-orientation -d "Turn meshes that face away from their normals"
complete -c sceneprep -n $prepare -l fix-culling -d "Turn triangles that their normals point against"
complete -c sceneprep -n $prepare -l weld -d "Weld equal vertices"
complete -c sceneprep -n $prepare -l normals -d "Compute smooth normals"
complete -c sceneprep -n $prepare -l unify-normals -d "Turn normals that point against their triangle"
complete -c sceneprep -n $prepare -l uvs -x -d "Generate texture coordinates" \
    -a "planar-x planar-y planar-z cubic cylindrical spherical"
complete -c sceneprep -n $prepare -l unique-names -d "Make names distinct"
complete -c sceneprep -n $prepare -l flatten -d "Collapse the hierarchy and merge surfaces"
complete -c sceneprep -n $prepare -l min-surfaces -x -d "Merge from so many surfaces on"
complete -c sceneprep -n $prepare -l max-vertices -x -d "The largest mesh that merging may make"
complete -c sceneprep -n $prepare -l ignore-animation -d "Collapse animated nodes too"
complete -c sceneprep -n $prepare -l surface-names -d "Name surfaces after mesh and material"
complete -c sceneprep -n $prepare -l collision-offsets -d "Tell overlapping surfaces apart"

set -l inspect "__fish_seen_subcommand_from inspect"
complete -c sceneprep -n $inspect -l json -d "Print JSON"
complete -c sceneprep -n $inspect -l tree -d "Print the hierarchy"

#pragma once

#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// Makes the names of nodes, meshes and materials distinct, each within its library.
Changes MakeNamesUnique(Importing::SceneContainer& scene);

/// Names every surface after its mesh and its material.
Changes NameSurfaces(Importing::SceneContainer& scene);

/// Makes the names of surfaces distinct.
Changes MakeSurfaceNamesUnique(Importing::SceneContainer& scene);

}  // namespace Pipeline

#pragma once

#include <pipeline/steps/StepOptions.h>
#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// Appends the steps that mend meshes, in this order: fix culling, forget normals, weld, compute normals, unify
/// normals, generate UVs. Each takes every mesh once, whoever shares it.
///
/// Normals that are going to be computed anew are forgotten before welding, or else they would keep corners of a
/// faceted mesh apart.
void AddGeometrySteps(StepSequence& pipeline, const StepOptions& options);

/// Turns the triangles whose three normals all point against them.
Changes FixCulling(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Sets every normal to (0, 0, 0).
Changes ForgetNormals(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Welds equal vertices and drops unused ones of meshes that have equal ones.
Changes Weld(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Computes every mesh's normals, splitting vertices at hard edges.
Changes ComputeNormals(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Turns the normals that point against their triangle.
Changes UnifyNormals(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

}  // namespace Pipeline

#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Computes smooth normals for every mesh without normals. Welds the vertices of these meshes first if options.weld is
/// set. Adds the number of meshes to `changes` if it is not 0. Pinned meshes are skipped.
void ComputeMissingNormals(const WorkScene& scene, const PrepareOptions& options, Changes& changes);

/// Gives a mesh without normals flat normals, as viewers do: every triangle gets its own vertices. Unused vertices are
/// dropped. Meshes without triangles do not change.
void MakeFlatNormals(Importing::Geometry& geometry);

}  // namespace Pipeline

#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Computes smooth normals of every mesh that has none, for steps that cannot work without; where vertices are going to
/// be welded, they are welded before. Adds the number of meshes to `changes` if there were any. Pinned meshes are
/// skipped.
void ComputeMissingNormals(const WorkScene& scene, const PrepareOptions& options, Changes& changes);

/// Gives a mesh without normals flat ones, as viewers show such a mesh: every triangle gets vertices of its own.
/// Vertices that no triangle uses are dropped. Does nothing to meshes of other polygons.
void MakeFlatNormals(Importing::Geometry& geometry);

}  // namespace Pipeline

#pragma once

#include <importing/geometry/Geometry.h>

#include <assimp/Importer.hpp>

/// Whether the normals of a mesh are passed to Assimp.
enum class Normals
{
    Kept,
    Dropped
};

/// Passes a mesh to Assimp as if one of its importers had read it, so that its post-processing steps can be measured:
/// positions, UV set 0, triangles, and normals if they are kept.
void LoadIntoAssimp(Assimp::Importer& importer, const Importing::Geometry& mesh, Normals normals);

#pragma once

#include <importing/geometry/Geometry.h>

#include <assimp/Importer.hpp>

/// Which attributes of a mesh are handed on.
enum class Normals
{
    Kept,
    Dropped
};

/// Hands a mesh to Assimp as if one of its importers had read it, so that its post-processing steps can be measured on
/// it: positions, UV set 0, triangles, and normals where they are kept.
void LoadIntoAssimp(Assimp::Importer& importer, const Importing::Geometry& mesh, Normals normals);

#pragma once

#include <importing/plugin/SceneContainer.h>

#include <cstdint>

/// How the nodes of a benchmark scene hang together.
enum class Shape
{
    Flat,    ///< all below the root
    Binary,  ///< two below each
    Chain    ///< one below the other
};

/// A box of 24 vertices with normals and one UV set, and 12 triangles.
Importing::Geometry MakeBox();

/// A mesh of at least vertexCount vertices: a grid of quads with normals and one UV set, four vertices to a quad.
Importing::Geometry MakeGrid(std::int64_t vertexCount);

/// A root and nodeCount nodes below it; every node but the root is moved a little and lists one surface with a box of
/// its own; surfaces take 16 materials in turn.
void FillScene(Importing::SceneContainer& scene, Shape shape, std::int64_t nodeCount);

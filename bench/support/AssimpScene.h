#pragma once

#include <cstdint>
#include <memory>

struct aiScene;

struct FreeAssimpScene
{
    void operator()(const aiScene* scene) const;
};
using AssimpScene = std::unique_ptr<aiScene, FreeAssimpScene>;

/// What FillScene() makes with Shape::Flat, as a scene of Assimp's: a root, below it nodeCount nodes with a box each of
/// 24 vertices with normals and one UV set, and 12 triangles.
AssimpScene MakeAssimpScene(std::int64_t nodeCount);

/// Assimp's own deep copy.
AssimpScene CopyOf(const aiScene& scene);

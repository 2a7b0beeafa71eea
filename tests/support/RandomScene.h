#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>
#include <support/Random.h>

#include <cstddef>
#include <cstdint>

namespace Support
{

/// Random signed integers, like the indices of a scene.
class Dice
{
public:
    explicit Dice(std::uint32_t seed) : random_(seed) {}

    /// Returns a number from 0 to count - 1.
    int Below(int count) { return static_cast<int>(random_.Below(static_cast<std::uint32_t>(count))); }
    int Between(int first, int last) { return first + Below(last - first + 1); }
    /// Returns true in one of `in` cases.
    bool OneIn(int in) { return Below(in) == 0; }
    /// Returns an index into a library, or -1 if it is empty.
    int Index(std::size_t size) { return size == 0 ? -1 : Below(static_cast<int>(size)); }

private:
    Random random_;
};

/// Special features that a random scene may have.
struct RandomSceneOptions
{
    int maxNodes = 14;
    int maxSurfaces = 14;
    bool missingMeshes = false;    ///< surfaces without a mesh
    bool secondReferences = true;  ///< nodes and surfaces that are referenced more than once
    bool sharedMeshes = true;      ///< several surfaces with one mesh
    bool largePolygons = false;    ///< meshes whose poly size is not 3
    bool projections = false;      ///< local matrices with a fourth column
};

/// Returns a scene without cycles and bad indices: nodes in any order, orphans, surfaces that are shared or referenced
/// twice, records of equal content and of equal name, mirrored, rotated and animated nodes. Some hashes are computed.
Importing::SceneContainer RandomScene(Dice& dice, const RandomSceneOptions& options);

/// Returns a matrix, mostly of integers, so that boxes often touch and matrices are often equal; sometimes mirrored or
/// rotated.
D3DXMATRIX RandomMatrix(Dice& dice);

}  // namespace Support

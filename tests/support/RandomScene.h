#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>
#include <support/Random.h>

#include <cstddef>
#include <cstdint>

namespace Support
{

/// Random whole numbers as scenes need them: signed, like the indices of a scene.
class Dice
{
public:
    explicit Dice(std::uint32_t seed) : random_(seed) {}

    /// From 0 to count - 1.
    int Below(int count) { return static_cast<int>(random_.Below(static_cast<std::uint32_t>(count))); }
    int Between(int first, int last) { return first + Below(last - first + 1); }
    /// True in one of `in` cases.
    bool OneIn(int in) { return Below(in) == 0; }
    /// An index into a library, or -1 when it is empty.
    int Index(std::size_t size) { return size == 0 ? -1 : Below(static_cast<int>(size)); }

private:
    Random random_;
};

/// What may occur in a random scene besides the usual.
struct RandomSceneOptions
{
    int maxNodes = 14;
    int maxSurfaces = 14;
    bool missingMeshes = false;  ///< surfaces without a mesh
    bool secondListings = true;  ///< nodes and surfaces that are listed more than once
    bool sharedMeshes = true;    ///< several surfaces on one mesh
    bool largePolygons = false;  ///< meshes whose poly size is not 3
    bool projections = false;    ///< local matrices with a fourth column
};

/// A scene without cycles and without bad indices: nodes in any order, orphans, shared and twice listed surfaces,
/// records of equal content and of equal name, mirrored, turned and animated nodes. Some cached hashes are computed.
Importing::SceneContainer RandomScene(Dice& dice, const RandomSceneOptions& options);

/// Mostly whole numbers, so that boxes often touch and matrices are often equal; sometimes mirrored or turned.
D3DXMATRIX RandomMatrix(Dice& dice);

}  // namespace Support

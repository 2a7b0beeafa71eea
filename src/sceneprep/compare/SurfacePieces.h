#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/compare/Pieces.h>

#include <cstddef>
#include <set>
#include <vector>

namespace Sceneprep
{

/// Which attributes are not taken, because they are changed on purpose.
struct IgnoredAttributes
{
    bool normals = false;  ///< and tangents
    std::set<int> texCoordSets = {};
};

/// What AddPieces() has met.
struct PieceCounts
{
    std::size_t broken = 0;  ///< pieces with a corner that is NaN or infinite; they are not taken
    double area = 0;
    double noise = 0;  ///< how far rounding may move corners that are small differences of large numbers
};

/// Converts meshes to pieces, as a viewer shows them that flips the winding where a matrix mirrors.
class SurfacePieces
{
public:
    explicit SurfacePieces(IgnoredAttributes ignored = {}) : ignored_(std::move(ignored)) {}

    /// Appends the triangles, lines or points of a mesh. Linear in vertices and indices; allocates only where the
    /// list and the room for vertices grow.
    /// @param geometry  its indices have been checked
    PieceCounts Add(Importing::Geometry& geometry, const Pipeline::VertexLayout& layout, const D3DXMATRIX& world,
                    std::uint32_t look, std::vector<Piece>& pieces);

private:
    struct Corner
    {
        std::array<double, 3> position;
        float normals;
        float texCoords;
        float others;
        float tangents;
    };
    class Attributes;

    void FillCorners(Importing::Geometry& geometry, const Attributes& attributes, const D3DXMATRIX& world);
    bool AddPiece(const std::uint32_t* indices, std::size_t count, std::uint32_t look, double handedness,
                  std::vector<Piece>& pieces, double& area) const;

    IgnoredAttributes ignored_;
    std::vector<Corner> corners_;  // kept from mesh to mesh
};

/// Returns a number that is linear in the vector, and different for vectors in different directions.
double ProjectedNormal(const std::array<double, 3>& normal);

}  // namespace Sceneprep

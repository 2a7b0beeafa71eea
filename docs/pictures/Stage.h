#pragma once

#include <importing/geometry/Geometry.h>
#include <pictures/Raster.h>

#include <functional>
#include <memory>
#include <vector>

namespace Pictures
{

class ShadowMap;

/// How a mesh is drawn.
struct MeshStyle
{
    std::function<Color(const Corner&)> color;  ///< before light falls on it
    bool cullBackFaces = false;                 ///< leaves out triangles whose winding faces away
    bool flat = false;                          ///< lit by the normals of triangles, not of vertices
    float shrink = 1;                           ///< size of every triangle about its centre
};

/// @return a style of one color.
MeshStyle Painted(const Color& color);

/// Meshes in the light of one distant lamp, on a floor that shows nothing but their shadows.
class Stage
{
public:
    Stage(const Camera& camera, int width, int height);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// Puts up a mesh of triangles; it is copied, and carried by the matrix.
    void Add(const Importing::Geometry& mesh, const D3DXMATRIX& placement, const MeshStyle& style);
    /// Draws what was put up.
    void DrawMeshes();
    /// The image, to draw marks over the meshes.
    Raster& Canvas() { return raster_; }

private:
    using Triangle = std::array<Corner, 3>;

    struct Prop
    {
        std::vector<Triangle> triangles;
        MeshStyle style;
    };

    void CastShadows();
    void DrawFloor();
    void DrawTriangle(const Triangle& triangle, const MeshStyle& style);

    Raster raster_;
    std::vector<Prop> props_;
    std::unique_ptr<ShadowMap> shadows_;
};

}  // namespace Pictures

#include <pictures/Stage.h>

#include <pictures/ShadowMap.h>
#include <pictures/Vectors.h>

#include <limits>

namespace Pictures
{
namespace
{

using Importing::Geometry;
using Importing::Vertex;

const D3DXVECTOR3 kToLight = Normalized(D3DXVECTOR3(-0.45F, 1.0F, 0.75F));
constexpr float kFillLight = 0.62F;
constexpr float kKeyLight = 0.52F;
constexpr int kShadowCells = 4096;

Corner CornerOf(Vertex vertex, const D3DXMATRIX& placement)
{
    const D3DXVECTOR2 uv = vertex.GetTexCoordCount() > 0 ? vertex.GetTexCoord(0) : D3DXVECTOR2(0, 0);
    return {MovedBy(placement, vertex.GetPosition()), Normalized(TurnedBy(placement, vertex.GetNormal())), uv};
}

D3DXVECTOR3 FaceNormal(const std::array<Corner, 3>& triangle)
{
    return Normalized(Cross(triangle[1].position - triangle[0].position, triangle[2].position - triangle[0].position));
}

void Shrink(std::array<Corner, 3>& triangle, float share)
{
    const D3DXVECTOR3 center = (triangle[0].position + triangle[1].position + triangle[2].position) * (1.0F / 3);
    for (Corner& corner : triangle)
        corner.position = center + (corner.position - center) * share;
}

/// A soft light from above and in front, and the lamp.
Color Lit(const Color& color, const D3DXVECTOR3& normal, float lampShare)
{
    const float fill = kFillLight * (0.80F + 0.20F * normal.y);
    const float key = kKeyLight * std::max(0.0F, Dot(normal, kToLight)) * lampShare;
    const Color warm{1.0F, 0.98F, 0.94F};
    const Color cool{0.96F, 0.99F, 1.04F};
    return {color.r * (fill * cool.r + key * warm.r), color.g * (fill * cool.g + key * warm.g),
            color.b * (fill * cool.b + key * warm.b)};
}

struct Bounds
{
    D3DXVECTOR3 min{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
                    std::numeric_limits<float>::max()};
    D3DXVECTOR3 max = -min;

    void Add(const D3DXVECTOR3& p)
    {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
};

}  // namespace

MeshStyle Painted(const Color& color)
{
    MeshStyle style;
    style.color = [color](const Corner&) { return color; };
    return style;
}

Stage::Stage(const Camera& camera, int width, int height) : raster_(camera, width, height, kPaper) {}
Stage::~Stage() = default;

void Stage::Add(const Geometry& mesh, const D3DXMATRIX& placement, const MeshStyle& style)
{
    Prop prop{{}, style};
    for (std::size_t i = 0; i + 2 < mesh.IndexArray.size(); i += 3)
    {
        Triangle triangle;
        for (std::size_t c = 0; c < triangle.size(); ++c)
            triangle[c] = CornerOf(mesh.VertexArray.at(mesh.IndexArray[i + c]), placement);
        Shrink(triangle, style.shrink);
        prop.triangles.push_back(triangle);
    }
    props_.push_back(std::move(prop));
}

void Stage::DrawMeshes()
{
    CastShadows();
    for (const Prop& prop : props_)
        for (const Triangle& triangle : prop.triangles)
            DrawTriangle(triangle, prop.style);
    DrawFloor();
}

void Stage::CastShadows()
{
    Bounds bounds;
    for (const Prop& prop : props_)
        for (const Triangle& triangle : prop.triangles)
            for (const Corner& corner : triangle)
                bounds.Add(corner.position);
    shadows_ = std::make_unique<ShadowMap>(kToLight, (bounds.min + bounds.max) * 0.5F,
                                           Length(bounds.max - bounds.min) * 0.5F, kShadowCells);
    for (const Prop& prop : props_)
    {
        for (const Triangle& triangle : prop.triangles)
        {
            // What is culled keeps no light away, as seen from the lamp.
            if (!prop.style.cullBackFaces || Dot(FaceNormal(triangle), kToLight) > 0)
                shadows_->AddTriangle(triangle[0].position, triangle[1].position, triangle[2].position);
        }
    }
}

void Stage::DrawFloor()
{
    constexpr float kFar = 1000;
    constexpr float kShade = 0.86F;
    const D3DXVECTOR3 up(0, 1, 0);
    const auto corner = [&up](float x, float z) { return Corner{D3DXVECTOR3(x, 0, z), up, D3DXVECTOR2(0, 0)}; };
    const auto shade = [&](const Corner& point) {
        return kPaper * (kShade + (1 - kShade) * shadows_->LightAt(point.position, up));
    };
    raster_.DrawTriangle({corner(-kFar, kFar), corner(kFar, kFar), corner(kFar, -kFar)}, shade);
    raster_.DrawTriangle({corner(-kFar, kFar), corner(kFar, -kFar), corner(-kFar, -kFar)}, shade);
}

void Stage::DrawTriangle(const Triangle& triangle, const MeshStyle& style)
{
    const D3DXVECTOR3 faceNormal = FaceNormal(triangle);
    const bool facesAway = Dot(faceNormal, raster_.View().Eye() - triangle[0].position) <= 0;
    if (facesAway && style.cullBackFaces)
        return;
    raster_.DrawTriangle(triangle, [&](const Corner& point) {
        const D3DXVECTOR3 normal = style.flat ? faceNormal : Normalized(point.normal);
        return Lit(style.color(point), normal, shadows_->LightAt(point.position, faceNormal));
    });
}

}  // namespace Pictures

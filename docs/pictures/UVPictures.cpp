#include <pictures/UVPictures.h>

#include <pictures/Layout.h>
#include <pictures/Shapes.h>
#include <pictures/Stage.h>
#include <pictures/Vectors.h>

#include <cmath>

namespace Pictures
{
namespace
{

using Importing::Geometry;

const Camera kFromTheSide({-4.6F, 4.2F, 8.6F}, {0.05F, 0.72F, 0}, 26);
const Camera kFromAbove({-1.6F, 12.6F, 3.5F}, {0.05F, 0.5F, 0}, 26);

float Fraction(float value) { return value - std::floor(value); }

/// Five by five fields; u runs from teal to red, v from strong to pale.
Color Chequer(const Corner& point)
{
    constexpr float kFields = 5;
    // Sides that lie exactly on the edge of a field would be speckled by rounding.
    constexpr float kNudge = 0.001F;
    const float u = point.uv.x + kNudge;
    const float v = point.uv.y + kNudge;
    const bool light = std::fmod(std::fabs(std::floor(u * kFields) + std::floor(v * kFields)), 2.0F) < 0.5F;
    if (light)
        return FromHex(0xF6EFE0);
    return Mix(Mix(kTeal, kRust, Fraction(u)), kSand, 0.45F * Fraction(v));
}

/// A barrel with edges at both ends, which its doubled outline keeps apart.
Geometry MakeBarrel()
{
    Geometry barrel = MakeTurned({{0.62F, 0}, {0.62F, 1.9F}, {0.62F, 1.9F}, {0, 1.9F}}, 48);
    barrel.ComputeNormals();
    return barrel;
}

struct Body
{
    Geometry mesh;
    D3DXMATRIX placement;
};

Image MappedPanel(GenerateUVs mapping, bool worldUnits, const Camera& camera)
{
    std::vector<Body> bodies = {
        {MakeBox(1.9F, 1.0F, 1.0F), Translation(-1.15F, 0, 1.0F)},
        {MakeBumpyBall(64, 32, 0), Then(Scaling(0.85F, 0.85F, 0.85F), Translation(-0.75F, -0.06F, -1.15F))},
        {MakeBarrel(), Translation(1.45F, 0, -0.1F)}};
    Stage stage(camera, kPanelWidth, kPanelHeight);
    for (Body& body : bodies)
    {
        (body.mesh.*mapping)(0, worldUnits);
        MeshStyle style;
        style.color = Chequer;
        stage.Add(body.mesh, body.placement, style);
    }
    stage.DrawMeshes();
    return stage.Canvas().Finish();
}

}  // namespace

Image DrawMapping(GenerateUVs mapping)
{
    return SideBySide({MappedPanel(mapping, false, kFromTheSide), "over the box"},
                      {MappedPanel(mapping, true, kFromTheSide), "in world units"});
}

Image DrawMappingFromAbove(GenerateUVs mapping)
{
    return SideBySide({MappedPanel(mapping, false, kFromTheSide), "from the side"},
                      {MappedPanel(mapping, false, kFromAbove), "from above"});
}

}  // namespace Pictures

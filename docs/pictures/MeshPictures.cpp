#include <pictures/MeshPictures.h>

#include <pictures/Layout.h>
#include <pictures/Shapes.h>
#include <pictures/Stage.h>
#include <pictures/Vectors.h>

#include <string>

namespace Pictures
{
namespace
{

using Importing::Geometry;

const Camera kBallCamera({-2.4F, 3.0F, 5.2F}, {0, 1.05F, 0}, 28);

Geometry MakeSmoothBall() { return MakeBumpyBall(36, 18, 0.09F); }

/// Picks about one in three, without an order that shows.
bool IsPicked(std::size_t number)
{
    const std::uint32_t mixed = (static_cast<std::uint32_t>(number) + 7U) * 2654435761U;
    return (mixed >> 16U) % 3U == 0;
}

std::string Count(const char* text, std::size_t count) { return text + std::to_string(count) + " vertices"; }

void DrawEdges(Raster& canvas, Geometry& mesh, const Color& color)
{
    for (std::size_t i = 0; i < mesh.IndexArray.size(); ++i)
    {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        canvas.DrawLine(mesh.VertexArray[mesh.IndexArray[i]].GetPosition(),
                        mesh.VertexArray[mesh.IndexArray[next]].GetPosition(), 0.9F, color, Visibility::Hidden);
    }
}

/// Dots where the corners are, or would be were the triangles shrunk about their centres.
void DrawCorners(Raster& canvas, Geometry& mesh, float shrink)
{
    const auto position = [&mesh](std::size_t i) { return mesh.VertexArray[mesh.IndexArray[i]].GetPosition(); };
    for (std::size_t i = 0; i < mesh.IndexArray.size(); ++i)
    {
        const std::size_t first = i - i % 3;
        const D3DXVECTOR3 center = (position(first) + position(first + 1) + position(first + 2)) * (1.0F / 3);
        canvas.DrawDot(center + (position(i) - center) * shrink, shrink < 1 ? 1.6F : 2.9F, kRust, Visibility::Hidden);
    }
}

Image WeldPanel(Geometry& mesh, float shrink)
{
    Stage stage(kBallCamera, kPanelWidth, kPanelHeight);
    MeshStyle style = Painted(kSand);
    style.flat = true;
    style.shrink = shrink;
    stage.Add(mesh, Translation(0, 0, 0), style);
    stage.DrawMeshes();
    if (shrink == 1.0F)
        DrawEdges(stage.Canvas(), mesh, Mix(kSand, kInk, 0.45F));
    DrawCorners(stage.Canvas(), mesh, shrink);
    return stage.Canvas().Finish();
}

/// Where the mesh faces the camera: a line for every normal, over everything that hides it.
void DrawNormals(Raster& canvas, Geometry& mesh, const D3DXMATRIX& placement, float length)
{
    for (std::size_t i = 0; i < mesh.IndexArray.size(); ++i)
    {
        const auto position = [&](std::size_t corner) {
            return MovedBy(placement, mesh.VertexArray[mesh.IndexArray[corner]].GetPosition());
        };
        const std::size_t first = i - i % 3;
        const D3DXVECTOR3 face = Cross(position(first + 1) - position(first), position(first + 2) - position(first));
        if (Dot(face, canvas.View().Eye() - position(i)) <= 0)
            continue;
        const D3DXVECTOR3 normal = TurnedBy(placement, mesh.VertexArray[mesh.IndexArray[i]].GetNormal());
        const bool against = Dot(face, normal) < 0;
        canvas.DrawLine(position(i), position(i) + normal * length, against ? 1.8F : 1.2F,
                        against ? kRust : Mix(kTeal, kInk, 0.45F), against ? Visibility::Always : Visibility::Hidden);
    }
}

struct Placed
{
    Geometry mesh;
    D3DXMATRIX placement;
    Color color;
};

Image NormalsPanel(const Camera& camera, std::vector<Placed>& things, float length)
{
    Stage stage(camera, kPanelWidth, kPanelHeight);
    for (const Placed& thing : things)
        stage.Add(thing.mesh, thing.placement, Painted(thing.color));
    stage.DrawMeshes();
    for (Placed& thing : things)
        DrawNormals(stage.Canvas(), thing.mesh, thing.placement, length);
    return stage.Canvas().Finish();
}

std::size_t VertexCount(const std::vector<Placed>& things)
{
    std::size_t count = 0;
    for (const Placed& thing : things)
        count += thing.mesh.VertexArray.size();
    return count;
}

void ForgetNormals(Geometry& mesh)
{
    for (Importing::Vertex& vertex : mesh.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 1, 0));
}

Image CulledPanel(const Geometry& mesh)
{
    Stage stage(kBallCamera, kPanelWidth, kPanelHeight);
    MeshStyle style = Painted(kSage);
    style.cullBackFaces = true;
    stage.Add(mesh, Translation(0, 0, 0), style);
    stage.DrawMeshes();
    return stage.Canvas().Finish();
}

}  // namespace

Image DrawWeld()
{
    Geometry mesh = Unjoined(MakeBumpyBall(18, 10, 0.09F));
    Panel before{WeldPanel(mesh, 0.78F), Count("before: ", mesh.VertexArray.size())};
    mesh.Optimize();
    return SideBySide(before, {WeldPanel(mesh, 1), Count("after: ", mesh.VertexArray.size())});
}

Image DrawComputeNormals()
{
    const Camera camera({-3.2F, 3.6F, 6.6F}, {0.1F, 0.85F, 0}, 28);
    std::vector<Placed> things = {
        {MakeRing(0.72F, 0.32F, 30, 14), Then(TurnAboutY(-8), Translation(-0.75F, 0, -0.2F)), kSky},
        {MakeBox(1.1F, 1.1F, 1.1F), Then(TurnAboutY(24), Translation(1.2F, 0, 0.5F)), kSand}};
    for (Placed& thing : things)
    {
        ForgetNormals(thing.mesh);
        thing.mesh.Optimize();
    }
    Panel before{NormalsPanel(camera, things, 0.2F), Count("before: ", VertexCount(things))};
    for (Placed& thing : things)
        thing.mesh.ComputeNormals();
    return SideBySide(before, {NormalsPanel(camera, things, 0.2F), Count("after: ", VertexCount(things))});
}

Image DrawUnifyNormals()
{
    std::vector<Placed> things = {{MakeSmoothBall(), Translation(0, 0, 0), kPlum}};
    Geometry& mesh = things.front().mesh;
    std::size_t inwards = 0;
    for (std::size_t i = 0; i < mesh.VertexArray.size(); ++i)
    {
        if (IsPicked(i))
        {
            mesh.VertexArray[i].InverseNormal();
            ++inwards;
        }
    }
    Panel before{NormalsPanel(kBallCamera, things, 0.17F), "before: " + std::to_string(inwards) + " point inwards"};
    mesh.UnifyNormals(false);
    return SideBySide(before, {NormalsPanel(kBallCamera, things, 0.17F), "after: none"});
}

Image DrawFixFaceCulling()
{
    Geometry mesh = MakeSmoothBall();
    for (std::size_t i = 0; i + 2 < mesh.IndexArray.size(); i += 3)
    {
        if (IsPicked(i / 3))
            std::swap(mesh.IndexArray[i + 1], mesh.IndexArray[i + 2]);
    }
    Panel before{CulledPanel(mesh), "before, back faces culled"};
    mesh.FixFaceCulling(false);
    return SideBySide(before, {CulledPanel(mesh), "after, back faces culled"});
}

}  // namespace Pictures

#include <pictures/ScenePictures.h>

#include <pictures/Font.h>
#include <pictures/Layout.h>
#include <pictures/SceneDrawing.h>
#include <pictures/Shapes.h>
#include <pictures/Vectors.h>

#include <array>
#include <string>

namespace Pictures
{
namespace
{

using Importing::Geometry;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using Importing::Transform;

constexpr std::array<Color, 5> kColors = {kStone, kTeal, kRust, kSky, kPlum};

void AddRoot(SceneContainer& scene)
{
    scene.NodeLibrary.emplace_back();
    scene.SetRootNodeIndex(0);
}

/// A child of the root with one surface of a material of its own.
void AddChild(SceneContainer& scene, int geometry, const D3DXMATRIX& placement)
{
    Surface surface;
    surface.SetGeometryID(geometry);
    surface.SetMaterialID(static_cast<int>(scene.SurfaceLibrary.size()));

    Node node;
    node.SetLocalTransform(Transform(placement));
    node.SurfaceList.push_back(scene.AddSurfaceToLibrary(surface, false));
    scene.NodeLibrary.push_back(node);
    scene.NodeLibrary.front().ChildList.push_back(static_cast<std::int32_t>(scene.NodeLibrary.size() - 1));
}

/// A thing that its mirror image cannot be mistaken for.
Geometry MakeLetterF()
{
    Geometry letter = MakeBox(0.45F, 2.2F, 0.6F);
    letter.Append(MakeBox(0.85F, 0.42F, 0.6F), Translation(0.6F, 1.78F, 0));
    letter.Append(MakeBox(0.55F, 0.42F, 0.6F), Translation(0.45F, 0.95F, 0));
    return letter;
}

Geometry MakeFir()
{
    Geometry fir = MakeTurned({{0.14F, 0}, {0.14F, 0.5F}}, 16);
    for (int tier = 0; tier < 3; ++tier)
    {
        const auto t = static_cast<float>(tier);
        const float bottom = 0.45F + 0.5F * t;
        fir.Append(MakeTurned({{0, bottom}, {0.75F - 0.17F * t, bottom}, {0, bottom + 0.85F}}, 24));
    }
    return fir;
}

Image ScenePanel(const Camera& camera, SceneContainer& scene, const SurfaceStyle& styleOf)
{
    Stage stage(camera, kPanelWidth, kPanelHeight);
    AddScene(stage, scene, styleOf);
    stage.DrawMeshes();
    return stage.Canvas().Finish();
}

MeshStyle Flat(const Color& color, bool cullBackFaces)
{
    MeshStyle style = Painted(color);
    style.flat = true;
    style.cullBackFaces = cullBackFaces;
    return style;
}

SceneContainer MakeFirs()
{
    SceneContainer scene;
    AddRoot(scene);
    Geometry fir = MakeFir();
    const int shared = scene.AddGeometryToLibrary(fir, false);
    AddChild(scene, shared, Translation(-1.6F, 0, 0.5F));
    AddChild(scene, shared, Then(Scaling(0.75F, 0.75F, 0.75F), Translation(0.1F, 0, -0.6F)));
    AddChild(scene, shared, Then(Scaling(1, 1.25F, 1), Translation(1.7F, 0, 0.3F)));
    return scene;
}

Image FlattenedFirs(SceneContainer& scene)
{
    scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 2, -1, true);
    const Camera camera({-2.4F, 3.7F, 8.9F}, {0.05F, 1.1F, 0}, 28);
    constexpr std::array<Color, 3> kGreens = {kSage, kTeal, kSand};
    return ScenePanel(camera, scene, [&](int surface, std::size_t) {
        return Flat(kGreens.at(static_cast<std::size_t>(surface)), false);
    });
}

struct Block
{
    D3DXVECTOR3 size;
    D3DXVECTOR3 at;
};

const std::array<Block, 7> kBlocks = {{{{2.2F, 0.5F, 2.2F}, {-0.9F, 0, -0.1F}},
                                       {{1.0F, 1.1F, 1.0F}, {-1.5F, 0.2F, -0.3F}},
                                       {{1.2F, 0.8F, 0.9F}, {-0.6F, 0.3F, 0.35F}},
                                       {{1.3F, 0.35F, 0.7F}, {0.55F, 0.1F, 0.6F}},
                                       {{0.8F, 0.8F, 0.8F}, {1.75F, 0, -0.9F}},
                                       {{0.8F, 0.4F, 0.8F}, {1.75F, 0.8F, -0.9F}},
                                       {{0.7F, 0.7F, 0.7F}, {2.0F, 0, 1.3F}}}};

SceneContainer MakeBlocks()
{
    SceneContainer scene;
    AddRoot(scene);
    for (const Block& block : kBlocks)
    {
        Geometry box = MakeBox(block.size.x, block.size.y, block.size.z);
        AddChild(scene, scene.AddGeometryToLibrary(box, false), Translation(block.at.x, block.at.y, block.at.z));
    }
    return scene;
}

void WriteOffsets(Image& image, const Camera& camera, SceneContainer& scene)
{
    Camera view = camera;
    view.SetImageSize(image.Width(), image.Height());
    for (std::size_t i = 0; i < kBlocks.size(); ++i)
    {
        const auto& [size, at] = kBlocks[i];
        const ScreenPoint top = view.ToScreen(view.ToView(at + D3DXVECTOR3(0, size.y, size.z * 0.28F)));
        const std::string offset = std::to_string(scene.SurfaceLibrary[i].GetCollisionOffset());
        DrawText(image, static_cast<int>(top.x) - TextWidth(offset, 2) / 2, static_cast<int>(top.y) - 7, offset, 2,
                 kInk);
    }
}

Image BlocksPanel(SceneContainer& scene)
{
    const Camera camera({-3.8F, 6.0F, 8.2F}, {0.45F, 0.35F, 0.1F}, 28);
    Image image = ScenePanel(camera, scene, [&scene](int surface, std::size_t) {
        const int offset = scene.SurfaceLibrary.at(static_cast<std::size_t>(surface)).GetCollisionOffset();
        return Flat(kColors.at(static_cast<std::size_t>(offset)), false);
    });
    WriteOffsets(image, camera, scene);
    return image;
}

}  // namespace

Image DrawRepairMirrors()
{
    SceneContainer scene;
    AddRoot(scene);
    for (const float mirror : {-1.0F, 1.0F})
    {
        Geometry letter = MakeLetterF();
        AddChild(scene, scene.AddGeometryToLibrary(letter, false),
                 Then(TurnAboutY(-14), Then(Translation(0.55F, 0, 0), Scaling(mirror, 1, 1))));
    }
    const Camera camera({-1.5F, 3.3F, 7.4F}, {0, 1.0F, 0}, 28);
    const SurfaceStyle style = [](int surface, std::size_t) { return Flat(surface == 0 ? kRust : kSky, true); };

    Panel before{ScenePanel(camera, scene, style), "before: a mirrored node"};
    scene.RemoveNegativeScaleMatricies(0, Transform::Indentity, Transform::Indentity);
    return SideBySide(before, {ScenePanel(camera, scene, style), "after: a mirrored mesh"});
}

Image DrawResolveInstances()
{
    SceneContainer shared = MakeFirs();
    SceneContainer resolved = MakeFirs();
    resolved.ResolveGeomInstances();
    return SideBySide({FlattenedFirs(shared), "flattened while shared"},
                      {FlattenedFirs(resolved), "resolved, then flattened"});
}

Image DrawCollisionOffsets()
{
    SceneContainer scene = MakeBlocks();
    Panel before{BlocksPanel(scene), "before"};
    scene.CalculateSurfaceCollisionOffset();
    return SideBySide(before, {BlocksPanel(scene), "after"});
}

}  // namespace Pictures

#include <sceneprep/export/ExportNotes.h>

#include <fmt/format.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/export/ExportScene.h>

#include <algorithm>

namespace Sceneprep
{

using Pipeline::IsIdentity;

namespace
{

using Importing::Map;
using Importing::SceneContainer;
using Importing::Surface;

struct NamedContent
{
    Content content;
    const char* loss;
    const char* name;
    bool (*isIn)(SceneContainer& scene);
};

template <typename Condition>
bool AnyMap(SceneContainer& scene, Condition condition)
{
    return std::any_of(scene.SurfaceLibrary.begin(), scene.SurfaceLibrary.end(), [&](Surface& surface) {
        return std::any_of(surface.MapList.begin(), surface.MapList.end(),
                           [&](Map& map) { return map.GetTextureID() >= 0 && condition(map); });
    });
}

bool HasUVSets(SceneContainer& scene, std::uint64_t count)
{
    return std::any_of(scene.GeometryLibrary.begin(), scene.GeometryLibrary.end(), [&](Importing::Geometry& mesh) {
        return std::any_of(mesh.VertexArray.begin(), mesh.VertexArray.end(),
                           [&](const Importing::Vertex& vertex) { return vertex.GetTexCoordCount() >= count; });
    });
}

bool HasJoints(SceneContainer& scene)
{
    return std::any_of(scene.GeometryLibrary.begin(), scene.GeometryLibrary.end(),
                       [](const Importing::Geometry& mesh) { return !mesh.JointArray.empty(); });
}

constexpr NamedContent kContents[] = {
    {Content::Cameras, "cameras", "cameras", [](SceneContainer& scene) { return !scene.CameraLibrary.empty(); }},
    {Content::Lights, "lights", "lights", [](SceneContainer& scene) { return !scene.LightLibrary.empty(); }},
    {Content::Animations, "animations", "animations",
     [](SceneContainer& scene) { return !scene.AnimationLibrary.empty(); }},
    {Content::Skins, "skins", "skins", HasJoints},
    {Content::Materials, "materials", "materials",
     [](SceneContainer& scene) { return !scene.MaterialLibrary.empty(); }},
    {Content::Textures, "textures", "textures",
     [](SceneContainer& scene) { return AnyMap(scene, [](Map&) { return true; }); }},
    {Content::TextureTransforms, "texture-transforms", "texture transforms",
     [](SceneContainer& scene) { return AnyMap(scene, [](Map& map) { return !IsIdentity(map.GetMatrix()); }); }},
    {Content::UVs, "uvs", "texture coordinates", [](SceneContainer& scene) { return HasUVSets(scene, 1); }},
    {Content::FurtherUVs, "further-uvs", "UV sets after the first",
     [](SceneContainer& scene) { return HasUVSets(scene, 2); }},
};

}  // namespace

Notes NotesOnExport(SceneContainer& scene, const WriteFormat& format)
{
    Notes notes;
    if (!format.IsFlat() && IsWrittenFlat(scene, format))
        notes.AddLoss("hierarchy", fmt::format("the hierarchy, animations, cameras and lights are dropped: nodes have "
                                               "shear, which {} does not hold",
                                               format.description));
    for (const NamedContent& entry : kContents)
    {
        if (!format.Holds(entry.content) && entry.isIn(scene))
            notes.AddLoss(entry.loss, fmt::format("{} does not hold {}", format.description, entry.name));
    }
    return notes;
}

}  // namespace Sceneprep

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

bool HoldsUVSets(SceneContainer& scene, std::uint64_t count)
{
    return std::any_of(scene.GeometryLibrary.begin(), scene.GeometryLibrary.end(), [&](Importing::Geometry& mesh) {
        return std::any_of(mesh.VertexArray.begin(), mesh.VertexArray.end(),
                           [&](const Importing::Vertex& vertex) { return vertex.GetTexCoordCount() >= count; });
    });
}

bool HoldsJoints(SceneContainer& scene)
{
    return std::any_of(scene.GeometryLibrary.begin(), scene.GeometryLibrary.end(),
                       [](const Importing::Geometry& mesh) { return !mesh.JointArray.empty(); });
}

constexpr NamedContent kContents[] = {
    {Content::Cameras, "cameras", [](SceneContainer& scene) { return !scene.CameraLibrary.empty(); }},
    {Content::Lights, "lights", [](SceneContainer& scene) { return !scene.LightLibrary.empty(); }},
    {Content::Movements, "movements", [](SceneContainer& scene) { return !scene.AnimationLibrary.empty(); }},
    {Content::Skins, "skins", HoldsJoints},
    {Content::Materials, "materials", [](SceneContainer& scene) { return !scene.MaterialLibrary.empty(); }},
    {Content::Textures, "textures", [](SceneContainer& scene) { return AnyMap(scene, [](Map&) { return true; }); }},
    {Content::TexturePlacements, "placements of textures",
     [](SceneContainer& scene) { return AnyMap(scene, [](Map& map) { return !IsIdentity(map.GetMatrix()); }); }},
    {Content::UVs, "texture coordinates", [](SceneContainer& scene) { return HoldsUVSets(scene, 1); }},
    {Content::FurtherUVs, "further sets of texture coordinates",
     [](SceneContainer& scene) { return HoldsUVSets(scene, 2); }},
};

}  // namespace

std::vector<std::string> NotesOnExport(SceneContainer& scene, const WriteFormat& format)
{
    std::vector<std::string> notes;
    if (!format.IsFlat() && IsWrittenFlat(scene, format))
        notes.push_back(
            fmt::format("the hierarchy, and with it movements, cameras and lights, is given up: nodes shear, "
                        "which those of {} cannot",
                        format.description));
    std::vector<std::string> lost;
    for (const NamedContent& entry : kContents)
    {
        if (!format.Holds(entry.content) && entry.isIn(scene))
            lost.emplace_back(entry.name);
    }
    if (!lost.empty())
        notes.push_back(fmt::format("left out, since {} as it is written here holds none: {}", format.description,
                                    fmt::join(lost, ", ")));
    return notes;
}

}  // namespace Sceneprep

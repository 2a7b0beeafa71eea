#include <pipeline/scene/SceneStats.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::SceneContainer;

void CountGeometries(const SceneContainer& scene, SceneStats& stats)
{
    for (const Importing::Geometry& geometry : scene.GeometryLibrary)
    {
        if (IsEmptied(geometry))
            continue;
        ++stats.geometries;
        stats.vertices += geometry.VertexArray.size();
        if (geometry.GetPolySize() == 3)
            stats.triangles += geometry.IndexArray.size() / 3;
        stats.joints += geometry.JointArray.size();
    }
}

std::size_t CountPlayedAnimations(const SceneContainer& scene)
{
    std::vector<bool> played(scene.AnimationLibrary.size(), false);
    const auto mark = [&played](int animation) {
        if (Importing::IsValidIndex(animation, played.size()))
            played[static_cast<std::size_t>(animation)] = true;
    };
    for (const Importing::Node& node : scene.NodeLibrary)
        mark(node.GetAnimationID());
    for (const Importing::Geometry& geometry : scene.GeometryLibrary)
    {
        for (const Importing::Joint& joint : geometry.JointArray)
            mark(joint.GetAnimationID());
    }
    return static_cast<std::size_t>(std::count(played.begin(), played.end(), true));
}

}  // namespace

std::array<std::pair<const char*, std::size_t>, 11> SceneStats::Rows() const
{
    return {{{"nodes", nodes},
             {"surfaces", surfaces},
             {"geometries", geometries},
             {"vertices", vertices},
             {"triangles", triangles},
             {"materials", materials},
             {"textures", textures},
             {"cameras", cameras},
             {"lights", lights},
             {"joints", joints},
             {"animations", animations}}};
}

SceneStats CountScene(SceneContainer& scene)
{
    SceneStats stats;
    stats.nodes = scene.NodeLibrary.size();
    stats.surfaces =
        static_cast<std::size_t>(std::count_if(scene.SurfaceLibrary.begin(), scene.SurfaceLibrary.end(),
                                               [](const Importing::Surface& surface) { return !IsEmptied(surface); }));
    CountGeometries(scene, stats);
    stats.materials = scene.MaterialLibrary.size();
    stats.textures = scene.TextureLibrary.size();
    stats.cameras = scene.CameraLibrary.size();
    stats.lights = scene.LightLibrary.size();
    stats.animations = CountPlayedAnimations(scene);
    return stats;
}

bool IsEmptied(const Importing::Surface& surface)
{
    return surface.GetGeometryID() < 0 && surface.GetMaterialID() < 0 && surface.MapList.empty();
}

bool IsEmptied(const Importing::Geometry& geometry)
{
    return geometry.VertexArray.empty() && geometry.IndexArray.empty();
}

}  // namespace Pipeline

#include <models/SceneModels.h>

namespace Models
{
namespace
{

using namespace Importing;

/// The number of records of each kind before the call.
struct Bases
{
    explicit Bases(const SceneContainer& scene)
        : node(static_cast<int>(scene.NodeLibrary.size())), surface(static_cast<int>(scene.SurfaceLibrary.size())),
          geometry(static_cast<int>(scene.GeometryLibrary.size())),
          animation(static_cast<int>(scene.AnimationLibrary.size())),
          camera(static_cast<int>(scene.CameraLibrary.size())), light(static_cast<int>(scene.LightLibrary.size()))
    {}

    int node, surface, geometry, animation, camera, light;
};

template <typename Record>
void AppendCopies(std::vector<Record>& library, const std::vector<Record>& others)
{
    for (const Record& record : others)
        library.push_back(Record(record));
}

void Shift(std::vector<std::int32_t>& list, int base)
{
    for (std::int32_t& index : list)
        index = static_cast<std::int32_t>(static_cast<std::uint32_t>(index) + static_cast<std::uint32_t>(base));
}

void AppendGeometries(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    AppendCopies(scene.GeometryLibrary, other.GeometryLibrary);
    for (std::size_t i = 0; i < other.GeometryLibrary.size(); ++i)
        for (Joint& joint : At(scene.GeometryLibrary, bases.geometry + static_cast<int>(i)).JointArray)
            if (joint.GetAnimationID() >= 0)
                joint.SetAnimationID(joint.GetAnimationID() + bases.animation);
}

void AppendNodes(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    AppendCopies(scene.NodeLibrary, other.NodeLibrary);
    scene.NodeLibrary.emplace_back();
    for (std::size_t i = 0; i < other.NodeLibrary.size(); ++i)
    {
        Node& node = At(scene.NodeLibrary, bases.node + static_cast<int>(i));
        if (node.GetAnimationID() >= 0)
            node.SetAnimationID(node.GetAnimationID() + bases.animation);
        Shift(node.ChildList, bases.node);
        Shift(node.SurfaceList, bases.surface);
        Shift(node.CameraList, bases.camera);
        Shift(node.LightList, bases.light);
    }
}

void AppendSurfaces(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    AppendCopies(scene.SurfaceLibrary, other.SurfaceLibrary);
    for (std::size_t i = 0; i < other.SurfaceLibrary.size(); ++i)
    {
        Surface& surface = At(scene.SurfaceLibrary, bases.surface + static_cast<int>(i));
        if (surface.GetGeometryID() >= 0)
            surface.SetGeometryID(surface.GetGeometryID() + bases.geometry);
        if (surface.GetMaterialID() >= 0)
        {
            Material copy = At(other.MaterialLibrary, surface.GetMaterialID());
            surface.SetMaterialID(AddMaterial(scene, copy));
        }
        for (Map& map : surface.MapList)
            if (map.GetTextureID() >= 0)
                map.SetTextureID(AddTexture(scene, At(other.TextureLibrary, map.GetTextureID())));
    }
}

void JoinRoots(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    const int root = scene.GetRootNodeIndex();
    const int otherRoot = other.GetRootNodeIndex();
    if (root >= 0 && At(scene.NodeLibrary, root).GetNote() == "Root added after merging")
    {
        At(scene.NodeLibrary, root).ChildList.push_back(otherRoot + bases.node);
        return;
    }
    Node joined;
    joined.SetName("Root");
    joined.SetNote("Root added after merging");
    if (root >= 0)
        joined.ChildList.push_back(root);
    if (otherRoot >= 0)
        joined.ChildList.push_back(otherRoot + bases.node);
    scene.NodeLibrary.push_back(joined);
    scene.SetRootNodeIndex(static_cast<int>(scene.NodeLibrary.size()) - 1);
}

}  // namespace

void AppendSC(SceneContainer& scene, SceneContainer& other)
{
    if (&scene == &other)
    {
        SceneContainer copy(other);
        AppendSC(scene, copy);
        return;
    }
    const Bases bases(scene);
    AppendGeometries(scene, other, bases);
    AppendNodes(scene, other, bases);
    AppendSurfaces(scene, other, bases);
    AppendCopies(scene.AnimationLibrary, other.AnimationLibrary);
    AppendCopies(scene.CameraLibrary, other.CameraLibrary);
    AppendCopies(scene.LightLibrary, other.LightLibrary);
    JoinRoots(scene, other, bases);
}

}  // namespace Models

#include <importing/base/CheckedAccess.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/plugin/TextureName.h>

#include <algorithm>
#include <utility>

namespace Importing
{
namespace
{

template <typename Record>
int IndexOfLast(const std::vector<Record>& library)
{
    return static_cast<int>(library.size()) - 1;
}

/// Removes references to the erased node from a child list and redirects references to the moved node to its new index.
void RepairChildList(std::vector<std::int32_t>& children, std::int32_t erased, std::int32_t moved)
{
    children.erase(std::remove(children.begin(), children.end(), erased), children.end());
    std::replace(children.begin(), children.end(), moved, erased);
}

/// Returns the number of entries of all surface lists whose surface passes a test.
template <typename Test>
int CountReferences(const SceneContainer& scene, Test test)
{
    int count = 0;
    for (const Node& node : scene.NodeLibrary)
        for (const std::int32_t surface : node.SurfaceList)
            if (test(At(scene.SurfaceLibrary, surface)))
                ++count;
    return count;
}

}  // namespace

void SceneContainer::EraseNodeFromLibrary(int index)
{
    CheckIndex(index, NodeLibrary.size());
    const auto last = static_cast<std::int32_t>(NodeLibrary.size() - 1);

    // (1) Move the last node into the place of the erased one.
    if (index != last)
        std::swap(NodeLibrary[static_cast<std::size_t>(index)], NodeLibrary.back());
    NodeLibrary.pop_back();

    // (2) Repair the child lists.
    for (Node& node : NodeLibrary)
        RepairChildList(node.ChildList, index, last);

    // (3) Repair the root node index, only where the root was moved.
    if (rootNodeIndex_ == last)
        rootNodeIndex_ = index;
}

int SceneContainer::AddGeometryToLibrary(Geometry& geometry, bool /*unique*/)
{
    GeometryLibrary.push_back(geometry);
    return IndexOfLast(GeometryLibrary);
}

void SceneContainer::EraseGeometryFromLibrary(int index) { At(GeometryLibrary, index).Release(); }

int SceneContainer::AddMaterialToLibrary(Material& material, bool unique)
{
    if (unique)
    {
        const auto equal = std::find_if(MaterialLibrary.begin(), MaterialLibrary.end(),
                                        [&material](Material& candidate) { return candidate == material; });
        if (equal != MaterialLibrary.end())
            return static_cast<int>(equal - MaterialLibrary.begin());
    }
    MaterialLibrary.push_back(material);
    return IndexOfLast(MaterialLibrary);
}

int SceneContainer::AddTextureToLibrary(const std::string& texture, bool unique)
{
    std::string name = NormalizeTextureName(texture);
    if (unique)
    {
        const auto equal = std::find(TextureLibrary.begin(), TextureLibrary.end(), name);
        if (equal != TextureLibrary.end())
            return static_cast<int>(equal - TextureLibrary.begin());
    }
    TextureLibrary.push_back(std::move(name));
    return IndexOfLast(TextureLibrary);
}

int SceneContainer::AddAnimationToLibrary(std::vector<Key> animation, bool unique)
{
    if (unique)
    {
        const auto equal = std::find(AnimationLibrary.begin(), AnimationLibrary.end(), animation);
        if (equal != AnimationLibrary.end())
            return static_cast<int>(equal - AnimationLibrary.begin());
    }
    AnimationLibrary.push_back(std::move(animation));
    return IndexOfLast(AnimationLibrary);
}

int SceneContainer::AddSurfaceToLibrary(Surface surface, bool /*unique*/)
{
    SurfaceLibrary.push_back(std::move(surface));
    return IndexOfLast(SurfaceLibrary);
}

void SceneContainer::EraseSurfaceFromLibrary(int index) { At(SurfaceLibrary, index).Release(); }

int SceneContainer::GetGeometryInstanceCount(int geometry)
{
    return CountReferences(*this, [geometry](const Surface& surface) { return surface.GetGeometryID() == geometry; });
}

int SceneContainer::GetMaterialInstanceCount(int material)
{
    return CountReferences(*this, [material](const Surface& surface) { return surface.GetMaterialID() == material; });
}

int SceneContainer::CreateNewGeometryInLibrary()
{
    GeometryLibrary.emplace_back();
    return IndexOfLast(GeometryLibrary);
}

}  // namespace Importing

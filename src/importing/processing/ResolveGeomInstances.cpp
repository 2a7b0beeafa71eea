// One walk over the references records which meshes are in use; every further use of a mesh gets a copy. A plain
// container walks twice: first on the mesh indices alone, to check that every mesh that will be copied exists, then to
// make the copies. One bit for each mesh records its use; only bad indices need a set. Cost: linear in references and
// copies.

#include <importing/base/CheckedAccess.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>

#include <cstddef>
#include <set>
#include <vector>

namespace Importing
{
namespace
{

/// The set of mesh indices met so far. An index outside the library is stored too: it is an error only if its mesh is
/// to be copied.
class MetMeshes
{
public:
    /// Adds a mesh index. Returns whether it was not in the set.
    bool Insert(int mesh, std::size_t librarySize)
    {
        if (inside_.size() < librarySize)
            inside_.resize(librarySize);
        const auto index = static_cast<std::size_t>(mesh);
        if (index >= inside_.size())
            return outside_.insert(mesh).second;
        if (inside_[index] || outside_.contains(mesh))
            return false;
        inside_[index] = true;
        return true;
    }

private:
    std::vector<bool> inside_;
    std::set<int> outside_;
};

/// Walks the surface lists of all nodes in order and calls meshOf(surface) for each entry; where that gives a mesh that
/// was met before, calls copyFor(surface, mesh). librarySize() is the number of meshes at that moment.
template <typename MeshOf, typename LibrarySize, typename CopyFor>
void ForEachRepeatedUse(const SceneContainer& scene, MeshOf meshOf, LibrarySize librarySize, CopyFor copyFor)
{
    MetMeshes met;
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        // An override of the addition may change the library, so the list is looked up again each time.
        for (std::size_t entry = 0; entry < At(scene.NodeLibrary, node).SurfaceList.size(); ++entry)
        {
            const std::int32_t surface = scene.NodeLibrary[node].SurfaceList[entry];
            const int mesh = meshOf(surface);
            if (mesh >= 0 && !met.Insert(mesh, librarySize()))
                copyFor(surface, mesh);
        }
    }
}

/// Simulates the operation on mesh indices alone, so that a bad index changes nothing. An index beyond the library may
/// become valid during the operation, because copies are appended.
void CheckRepeatedUses(const SceneContainer& scene)
{
    std::vector<int> meshes;
    meshes.reserve(scene.SurfaceLibrary.size());
    for (const Surface& surface : scene.SurfaceLibrary)
        meshes.push_back(surface.GetGeometryID());

    std::size_t librarySize = scene.GeometryLibrary.size();
    ForEachRepeatedUse(
        scene, [&meshes](std::int32_t surface) { return At(meshes, surface); }, [&librarySize] { return librarySize; },
        [&](std::int32_t surface, int mesh) {
            CheckIndex(mesh, librarySize);
            At(meshes, surface) = static_cast<int>(librarySize++);
        });
}

void CheckSurfaces(const SceneContainer& scene)
{
    for (const Node& node : scene.NodeLibrary)
        CheckIndices(node.SurfaceList, scene.SurfaceLibrary.size());
}

}  // namespace

int SceneContainer::ResolveGeomInstances()
{
    if (IsPlain(*this))
        CheckRepeatedUses(*this);
    else
        CheckSurfaces(*this);

    ForEachRepeatedUse(
        *this, [this](std::int32_t surface) { return At(SurfaceLibrary, surface).GetGeometryID(); },
        [this] { return GeometryLibrary.size(); },
        [this](std::int32_t surface, int mesh) {
            const int copy = AddGeometryToLibrary(At(GeometryLibrary, mesh), true);
            At(SurfaceLibrary, surface).SetGeometryID(copy);
        });
    return 0;
}

}  // namespace Importing

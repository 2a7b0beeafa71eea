// A plain container plans all merges first and then carries the plan out, so that a bad index changes nothing, each
// merged mesh is reserved once and the surface list is compacted once. MergePlan.cpp finds the plan in linear time. The
// literal form compares every base with every later surface, which is quadratic. A derived container gets this form,
// because its overrides of the erasing operations may change what is compared next.

#include <importing/base/CheckedAccess.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/processing/MergePlan.h>

#include <algorithm>
#include <cstddef>
#include <map>

namespace Importing
{
namespace
{

void EraseFromLastToFirst(SceneContainer& scene, std::vector<std::int32_t>& surfaces)
{
    std::sort(surfaces.begin(), surfaces.end());
    for (auto surface = surfaces.rbegin(); surface != surfaces.rend(); ++surface)
        scene.EraseSurfaceFromLibrary(*surface);
}

/// Appends one mesh to another and empties it. A mesh that is appended to itself is doubled and then emptied.
void Absorb(SceneContainer& scene, int to, int from)
{
    At(scene.GeometryLibrary, to).Append(At(scene.GeometryLibrary, from));
    scene.EraseGeometryFromLibrary(from);
}

/// Computes the hashes that the literal search computes when it compares surfaces. They are part of the result.
void ComputeComparedHashes(SceneContainer& scene, const std::vector<std::int32_t>& list, const MergePlan& plan)
{
    for (std::size_t i = 0; i < plan.comparedMaps.size(); ++i)
        for (std::size_t map = 0; map < plan.comparedMaps[i]; ++map)
            At(scene.SurfaceLibrary, list[i]).MapList[map].GetHash();
}

/// Carries out a plan: bases in order, each mesh reserved once. Returns the indices of the merged surfaces.
std::vector<std::int32_t> CarryOut(SceneContainer& scene, std::vector<std::int32_t>& list, const MergePlan& plan)
{
    std::vector<std::int32_t> absorbed;
    std::vector<bool> isAbsorbed(list.size());
    for (const Merge& merge : plan.merges)
    {
        Geometry& mesh = At(scene.GeometryLibrary, merge.geometry);
        mesh.SetName("");
        mesh.VertexArray.reserve(merge.vertexCount);
        mesh.IndexArray.reserve(merge.indexCount);
        for (std::size_t i = 0; i < merge.joining.size(); ++i)
        {
            Absorb(scene, merge.geometry, merge.joiningGeometries[i]);
            absorbed.push_back(list[merge.joining[i]]);
            isAbsorbed[merge.joining[i]] = true;
        }
    }

    std::size_t kept = 0;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (!isAbsorbed[i])
            list[kept++] = list[i];
    list.resize(kept);
    return absorbed;
}

void MergeByPlan(SceneContainer& scene, int node, int minSurfaces, int maxVertices)
{
    std::vector<std::int32_t>& list = At(scene.NodeLibrary, node).SurfaceList;
    const MergePlan plan = PlanMerges(list, scene.SurfaceLibrary, scene.GeometryLibrary, minSurfaces, maxVertices);
    ComputeComparedHashes(scene, list, plan);
    std::vector<std::int32_t> absorbed = CarryOut(scene, list, plan);
    EraseFromLastToFirst(scene, absorbed);
}

/// The merge of a derived container: the literal search, surface by surface.
class LiteralMerging
{
public:
    LiteralMerging(SceneContainer& scene, int node, int minSurfaces, int maxVertices)
        : scene_(scene), node_(node), minSurfaces_(minSurfaces),
          vertexLimit_(static_cast<std::uint64_t>(static_cast<std::int64_t>(maxVertices)))
    {}

    void Run()
    {
        for (const std::int32_t surface : List())
            ++countOf_[At(scene_.SurfaceLibrary, surface).GetMaterialID()];
        for (std::size_t base = 0; base < List().size(); ++base)
        {
            const int count = countOf_[At(scene_.SurfaceLibrary, List()[base]).GetMaterialID()];
            const bool isAlone = minSurfaces_ != 0 && count == 1;
            if (!isAlone && count >= minSurfaces_)
                ScanCandidates(base, count);
        }
        EraseFromLastToFirst(scene_, absorbed_);
    }

private:
    /// Returns the surface list. Overrides may change the library, so it is looked up again each time.
    std::vector<std::int32_t>& List() { return At(scene_.NodeLibrary, node_).SurfaceList; }

    void ScanCandidates(std::size_t base, int count)
    {
        int merges = 0;
        for (std::size_t candidate = base + 1; candidate < List().size();)
        {
            Surface surface = At(scene_.SurfaceLibrary, List()[base]);
            Surface& other = At(scene_.SurfaceLibrary, List()[candidate]);
            const int to = surface.GetGeometryID();
            const int from = other.GetGeometryID();
            if (minSurfaces_ > 0 && !surface.IsSameMaterialAndMaps(other))
            {
                ++candidate;
                continue;
            }
            At(scene_.GeometryLibrary, to).SetName("");
            const std::uint64_t vertices =
                At(scene_.GeometryLibrary, to).VertexArray.size() + At(scene_.GeometryLibrary, from).VertexArray.size();
            if (vertices > vertexLimit_)
                return;

            const std::int32_t joining = List()[candidate];
            Absorb(scene_, to, from);
            absorbed_.push_back(joining);
            CheckIndex(candidate, List().size());
            List().erase(List().begin() + static_cast<std::ptrdiff_t>(candidate));
            ++merges;
            if (minSurfaces_ != 0 && count == merges - 1)
                return;
        }
    }

    SceneContainer& scene_;
    int node_;
    int minSurfaces_;
    std::uint64_t vertexLimit_;
    std::map<int, int> countOf_;
    std::vector<std::int32_t> absorbed_;
};

}  // namespace

int SceneContainer::MergeSurfaces(int node, int minSurfaces, int maxVertices)
{
    if (IsPlain(*this))
        MergeByPlan(*this, node, minSurfaces, maxVertices);
    else
        LiteralMerging(*this, node, minSurfaces, maxVertices).Run();
    return 0;
}

}  // namespace Importing

// Libraries are copied one after the other, and the indices of each copy are shifted as soon as it is made, while it is
// in the cache. Of materials and textures only those that surfaces use are copied, unless the scene has equal ones. The
// literal form scans the library for every use, which is quadratic; a plain container uses a table from content to
// index instead. The table is filled only as far as the scans would go, so that the same hashes are computed.
// Cost: linear in both scenes on average.

#include <importing/base/CheckedAccess.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/plugin/TextureName.h>

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace Importing
{
namespace
{

constexpr const char* kRootName = "Root";
constexpr const char* kRootNote = "Root added after merging";

/// The indices at which the other scene's records begin in this one.
struct Bases
{
    std::int32_t node;
    std::int32_t surface;
    std::int32_t geometry;
    std::int32_t animation;
    std::int32_t camera;
    std::int32_t light;
};

template <typename Record>
std::int32_t SizeOf(const std::vector<Record>& library)
{
    return static_cast<std::int32_t>(library.size());
}

Bases BasesOf(const SceneContainer& scene)
{
    return {SizeOf(scene.NodeLibrary),      SizeOf(scene.SurfaceLibrary), SizeOf(scene.GeometryLibrary),
            SizeOf(scene.AnimationLibrary), SizeOf(scene.CameraLibrary),  SizeOf(scene.LightLibrary)};
}

/// Checks the indices that will be looked up, so that a bad one changes neither scene.
void CheckReferences(const SceneContainer& other)
{
    for (const Surface& surface : other.SurfaceLibrary)
    {
        if (surface.GetMaterialID() >= 0)
            CheckIndex(surface.GetMaterialID(), other.MaterialLibrary.size());
        for (const Map& map : surface.MapList)
            if (map.GetTextureID() >= 0)
                CheckIndex(map.GetTextureID(), other.TextureLibrary.size());
    }
}

/// Checks that the root's note can be looked up after the nodes, including the spare one, have been appended. An
/// override of GetRootNodeIndex gets its call then; here it is called only if the stored index is not valid.
void CheckRoot(const SceneContainer& scene, const SceneContainer& other)
{
    const std::size_t nodes = scene.NodeLibrary.size() + other.NodeLibrary.size() + 1;
    const auto isUsable = [nodes](int root) { return root < 0 || IsValidIndex(root, nodes); };
    if (!isUsable(scene.SceneContainer::GetRootNodeIndex()) && !isUsable(scene.GetRootNodeIndex()))
        ThrowBadSubscript();
}

/// Reserves capacity for `count` more records. A library that must grow at least doubles, so that appending many small
/// scenes is amortised linear.
template <typename Record>
void ReserveMore(std::vector<Record>& library, std::size_t count)
{
    const std::size_t needed = library.size() + count;
    if (library.capacity() < needed)
        library.reserve(std::max(needed, 2 * library.size()));
}

template <typename Record>
void AppendCopies(std::vector<Record>& library, const std::vector<Record>& others)
{
    library.insert(library.end(), others.begin(), others.end());
}

/// Appends copies and calls adjust(copy) as soon as each is made, while it is in the cache.
template <typename Record, typename Adjust>
void AppendCopies(std::vector<Record>& library, const std::vector<Record>& others, Adjust adjust)
{
    ReserveMore(library, others.size());
    for (const Record& record : others)
    {
        library.push_back(record);
        adjust(library.back());
    }
}

/// Returns an index plus a base. The sum wraps around, so that a bad index near the limit is not undefined behaviour.
std::int32_t Shifted(std::int32_t index, std::int32_t base)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(index) + static_cast<std::uint32_t>(base));
}

void Shift(std::vector<std::int32_t>& indices, std::int32_t base)
{
    for (std::int32_t& index : indices)
        index = Shifted(index, base);
}

/// Shifts the animation index of a node or a joint, if it has one.
template <typename Animated>
void ShiftAnimation(Animated& record, std::int32_t base)
{
    if (record.GetAnimationID() >= 0)
        record.SetAnimationID(Shifted(record.GetAnimationID(), base));
}

void AppendGeometries(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    AppendCopies(scene.GeometryLibrary, other.GeometryLibrary, [&bases](Geometry& copy) {
        for (Joint& joint : copy.JointArray)
            ShiftAnimation(joint, bases.animation);
    });
}

/// Appends the nodes and one spare default node. The indices of later nodes depend on the spare node.
void AppendNodes(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    constexpr std::size_t kSpareAndRoot = 2;
    ReserveMore(scene.NodeLibrary, other.NodeLibrary.size() + kSpareAndRoot);
    AppendCopies(scene.NodeLibrary, other.NodeLibrary, [&bases](Node& copy) {
        ShiftAnimation(copy, bases.animation);
        Shift(copy.ChildList, bases.node);
        Shift(copy.SurfaceList, bases.surface);
        Shift(copy.CameraList, bases.camera);
        Shift(copy.LightList, bases.light);
    });
    scene.NodeLibrary.emplace_back();
}

/// Finds the materials and textures that the appended surfaces use in the scene's libraries, or adds them.
///
/// A derived container gets the calls AddMaterialToLibrary(copy, true) and AddTextureToLibrary(copy, true) for every
/// use. For a plain container the first record of equal content is looked up in a table.
class LibraryAdditions
{
public:
    LibraryAdditions(SceneContainer& scene, const SceneContainer& other)
        : scene_(scene), other_(other), isPlain_(IsPlain(scene)), materialOf_(other.MaterialLibrary.size(), -1),
          textureOf_(other.TextureLibrary.size(), -1)
    {}

    int AddMaterial(int index)
    {
        const Material& material = At(other_.MaterialLibrary, index);
        if (!isPlain_)
        {
            Material copy = material;
            return scene_.AddMaterialToLibrary(copy, true);
        }

        std::int32_t& known = materialOf_[static_cast<std::size_t>(index)];
        const bool isTabled = known >= 0 && static_cast<std::size_t>(known) < tabledMaterials_;
        if (!isTabled)
            known = FindOrAdd(material);
        return known;
    }

    int AddTexture(int index)
    {
        const std::string& texture = At(other_.TextureLibrary, index);
        if (!isPlain_)
            return scene_.AddTextureToLibrary(std::string(texture), true);

        std::int32_t& known = textureOf_[static_cast<std::size_t>(index)];
        if (known < 0)
            known = FindOrAdd(NormalizeTextureName(texture));
        return known;
    }

private:
    int FindOrAdd(Material material)
    {
        std::vector<Material>& library = scene_.MaterialLibrary;
        if (!library.empty())
        {
            const std::uint32_t hash = material.GetHash();
            const auto known = materialByHash_.find(hash);
            if (known != materialByHash_.end())
                return known->second;
            while (tabledMaterials_ < library.size())
            {
                const auto index = static_cast<std::int32_t>(tabledMaterials_);
                const std::uint32_t candidate = library[tabledMaterials_++].GetHash();
                materialByHash_.try_emplace(candidate, index);
                if (candidate == hash)
                    return index;
            }
        }
        library.push_back(material);
        return SizeOf(library) - 1;
    }

    int FindOrAdd(const std::string& texture)
    {
        std::vector<std::string>& library = scene_.TextureLibrary;
        for (; tabledTextures_ < library.size(); ++tabledTextures_)
            textureByName_.try_emplace(library[tabledTextures_], static_cast<std::int32_t>(tabledTextures_));
        const auto [entry, isNew] = textureByName_.try_emplace(texture, SizeOf(library));
        if (isNew)
        {
            library.push_back(texture);
            ++tabledTextures_;
        }
        return entry->second;
    }

    SceneContainer& scene_;
    const SceneContainer& other_;
    bool isPlain_;
    std::vector<std::int32_t> materialOf_;  ///< the other's material -> the scene's; -1 while unknown
    std::vector<std::int32_t> textureOf_;
    std::unordered_map<std::uint32_t, std::int32_t> materialByHash_;
    std::unordered_map<std::string, std::int32_t> textureByName_;
    std::size_t tabledMaterials_ = 0;
    std::size_t tabledTextures_ = 0;
};

void AppendSurfaces(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    AppendCopies(scene.SurfaceLibrary, other.SurfaceLibrary);
    LibraryAdditions additions(scene, other);
    const std::size_t end = scene.SurfaceLibrary.size();
    for (std::size_t i = static_cast<std::size_t>(bases.surface); i < end; ++i)
    {
        // An override of an addition may add surfaces, so the surface is looked up again after each addition.
        const auto surface = [&scene, i]() -> Surface& { return At(scene.SurfaceLibrary, i); };
        if (surface().GetGeometryID() >= 0)
            surface().SetGeometryID(Shifted(surface().GetGeometryID(), bases.geometry));
        if (surface().GetMaterialID() >= 0)
        {
            const int material = additions.AddMaterial(surface().GetMaterialID());
            surface().SetMaterialID(material);
        }
        for (std::size_t map = 0; map < surface().MapList.size(); ++map)
        {
            if (surface().MapList[map].GetTextureID() < 0)
                continue;
            const int texture = additions.AddTexture(surface().MapList[map].GetTextureID());
            At(surface().MapList, map).SetTextureID(texture);
        }
    }
}

bool IsMergeResult(SceneContainer& scene, int root)
{
    return root >= 0 && At(scene.NodeLibrary, root).GetNote() == kRootNote;
}

/// Joins the two roots. If this scene is the result of an earlier call, its root gets the other root as a further
/// child; otherwise a new root node is appended above both. If the other scene has no root, its -1 is shifted like any
/// index, so the root of an earlier call then gets the node before the appended ones as a child.
void JoinRoots(SceneContainer& scene, const SceneContainer& other, const Bases& bases)
{
    const int root = scene.GetRootNodeIndex();
    const int otherRoot = other.GetRootNodeIndex();
    if (IsMergeResult(scene, root))
    {
        At(scene.NodeLibrary, root).ChildList.push_back(Shifted(otherRoot, bases.node));
        return;
    }

    Node joined;
    joined.SetName(kRootName);
    joined.SetNote(kRootNote);
    if (root >= 0)
        joined.ChildList.push_back(root);
    if (otherRoot >= 0)
        joined.ChildList.push_back(Shifted(otherRoot, bases.node));
    scene.NodeLibrary.push_back(std::move(joined));
    scene.SetRootNodeIndex(SizeOf(scene.NodeLibrary) - 1);
}

}  // namespace

int SceneContainer::AppendSC(SceneContainer* other)
{
    if (other == nullptr)
        return -1;
    if (other == this)
    {
        SceneContainer copy(*this);
        return SceneContainer::AppendSC(&copy);
    }
    CheckReferences(*other);
    CheckRoot(*this, *other);

    const Bases bases = BasesOf(*this);
    AppendGeometries(*this, *other, bases);
    AppendNodes(*this, *other, bases);
    AppendSurfaces(*this, *other, bases);
    AppendCopies(AnimationLibrary, other->AnimationLibrary);
    AppendCopies(CameraLibrary, other->CameraLibrary);
    AppendCopies(LightLibrary, other->LightLibrary);
    JoinRoots(*this, *other, bases);
    return 0;
}

}  // namespace Importing

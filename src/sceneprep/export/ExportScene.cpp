#include <sceneprep/export/ExportScene.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <pipeline/scene/Skeletons.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/export/CutMesh.h>
#include <sceneprep/export/ExportMaterials.h>
#include <sceneprep/export/ExportMeshes.h>
#include <sceneprep/export/ExportNames.h>
#include <sceneprep/export/ExportObjects.h>
#include <sceneprep/model/AnimationTime.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace Sceneprep
{

using Pipeline::HasTriangles;
using Pipeline::IsShearFree;
using Pipeline::JointNode;
using Pipeline::ListSkinnedMeshes;
using Pipeline::NodeWalk;
using Pipeline::Product;
using Pipeline::Skeletons;
using Pipeline::SkinnedMesh;
using Pipeline::WalkFromRoot;
using Pipeline::WorldMatricesOf;

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;

/// Hands a list of owners over to an array of a file's scene.
template <typename T>
void MoveInto(std::vector<std::unique_ptr<T>>& list, T**& array, unsigned& count)
{
    if (list.empty())
        return;
    array = new T*[list.size()];
    for (std::unique_ptr<T>& entry : list)
        array[count++] = entry.release();
}

/// Some exporters refuse a scene that is marked as sharing vertices and does not, others need the mark where it does.
unsigned FlagsOf(const std::vector<std::unique_ptr<aiMesh>>& meshes)
{
    if (meshes.empty())
        return AI_SCENE_FLAGS_INCOMPLETE;
    const bool sharesVertices =
        std::any_of(meshes.begin(), meshes.end(), [](const auto& mesh) { return SharesVertices(*mesh); });
    return sharesVertices ? AI_SCENE_FLAGS_NON_VERBOSE_FORMAT : 0U;
}

/// Turns a frame in which y points up into one in which z does.
const D3DXMATRIX kTurnZUp = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};

/// Builds one file's scene.
class SceneExporter
{
public:
    SceneExporter(SceneContainer& scene, const Textures& textures, const WriteFormat& format)
        : scene_(scene), textures_(textures), format_(format), walk_(WalkFromRoot(scene)),
          materials_(scene, textures, format), nodeOf_(scene.NodeLibrary.size(), 0)
    {
        for (Node& node : scene.NodeLibrary)
            ++nameUses_[FileText(node.GetName())];
    }

    std::unique_ptr<aiScene> Build()
    {
        if (walk_.order.empty())
            AddNode(scene_.GetName(), aiMatrix4x4());
        else if (IsWrittenFlat(scene_, format_))
            BuildFlat();
        else
            BuildHierarchy();
        return Assemble();
    }

private:
    using MeshKey = std::tuple<int, unsigned, std::vector<int>>;  // geometry, material of the file, joints

    struct FileNode
    {
        std::unique_ptr<aiNode> node;
        std::vector<std::size_t> children;
    };

    void BuildFlat()
    {
        const std::vector<D3DXMATRIX> matrices = WorldMatricesOf(scene_, walk_);
        const std::size_t top = AddNode(At(scene_.NodeLibrary, walk_.order.front()).GetName(), aiMatrix4x4());
        for (const int node : walk_.order)
        {
            const D3DXMATRIX& world = At(matrices, node);
            const D3DXMATRIX placement = format_.IsZUp() ? Product(world, kTurnZUp) : world;
            for (const std::int32_t index : At(scene_.NodeLibrary, node).SurfaceList)
                AddBakedSurface(At(scene_.SurfaceLibrary, index), placement, top);
        }
    }

    void AddBakedSurface(Surface& surface, const D3DXMATRIX& world, std::size_t top)
    {
        if (!IsShown(surface))
            return;
        Geometry& geometry = At(scene_.GeometryLibrary, surface.GetGeometryID());
        if (!IsLargerThan(format_.LargestMesh(), geometry))
        {
            AddBakedMesh(geometry, surface, world, top);
            return;
        }
        for (Geometry& part : CutMesh(geometry, format_.LargestMesh()))
            AddBakedMesh(part, surface, world, top);
    }

    void AddBakedMesh(Geometry& geometry, Surface& surface, const D3DXMATRIX& world, std::size_t top)
    {
        const unsigned mesh = AddMesh(geometry, surface);
        BakeMatrix(world, *meshes_[mesh]);
        SetMesh(AddChild(top, surface.GetName()), mesh);
    }

    void BuildHierarchy()
    {
        if (format_.Holds(Content::Skins))
            FindSkeletons();
        if (format_.LosesRoot())
            AddNode("", aiMatrix4x4());  // the scene's own root stands below it
        for (const int index : walk_.order)
        {
            Node& node = At(scene_.NodeLibrary, index);
            const std::size_t target = AddNode(FileNameOf(index), FromMatrix(node.GetLocalTransform().GetMatrix()));
            At(nodeOf_, index) = target;
            const int parent = At(walk_.parent, index);
            if (parent >= 0)
                nodes_[At(nodeOf_, parent)].children.push_back(target);
            else if (format_.LosesRoot())
                nodes_.front().children.push_back(target);
            AddAnimation(node.GetAnimationID(), target);
        }
        AddJointNodes();
        // Children that surfaces and objects need stand behind the scene's own.
        for (const int index : walk_.order)
        {
            Node& node = At(scene_.NodeLibrary, index);
            AddSurfaces(index, At(nodeOf_, index));
            if (format_.Holds(Content::Cameras) || format_.Holds(Content::Lights))
                AddCamerasAndLights(node, At(nodeOf_, index));
        }
    }

    void FindSkeletons()
    {
        const std::vector<SkinnedMesh> meshes = ListSkinnedMeshes(scene_, walk_);
        if (meshes.empty())
            return;
        for (Surface& surface : scene_.SurfaceLibrary)
            ++nameUses_[FileText(surface.GetName())];  // children that surfaces need must not be taken for bones
        skeletons_.emplace(scene_, walk_);
        for (const SkinnedMesh& mesh : meshes)
        {
            std::vector<int>& joints = jointsOf_[{mesh.geometry, mesh.node}];
            if (joints.empty())
                joints = skeletons_->Find(At(scene_.GeometryLibrary, mesh.geometry), mesh.node);
            isJoint_.insert(joints.begin(), joints.end());
        }
    }

    void AddJointNodes()
    {
        if (!skeletons_)
            return;
        for (const JointNode& joint : skeletons_->JointNodes())
        {
            const std::size_t target = AddNode(UniqueName(joint.name, "joint"), FromMatrix(joint.local));
            nodes_[At(nodeOf_, joint.parent)].children.push_back(target);
            nodeOf_.push_back(target);
            AddAnimation(joint.animation, target);
        }
    }

    bool IsShown(const Surface& surface)
    {
        return surface.GetGeometryID() >= 0 && HasTriangles(At(scene_.GeometryLibrary, surface.GetGeometryID()));
    }

    void AddSurfaces(int node, std::size_t target)
    {
        std::vector<Surface*> shown;
        for (const std::int32_t index : At(scene_.NodeLibrary, node).SurfaceList)
        {
            Surface& surface = At(scene_.SurfaceLibrary, index);
            if (IsShown(surface))
                shown.push_back(&surface);
        }
        if (shown.size() == 1)
        {
            SetMesh(target, SharedMesh(*shown.front(), node));
            return;
        }
        for (Surface* surface : shown)
            SetMesh(AddChild(target, surface->GetName()), SharedMesh(*surface, node));
    }

    unsigned SharedMesh(Surface& surface, int node)
    {
        const int index = surface.GetGeometryID();
        Geometry& geometry = At(scene_.GeometryLibrary, index);
        const auto joints = jointsOf_.find({index, node});
        const bool isSkinned = joints != jointsOf_.end();
        const MeshKey key{index, materials_.Find(surface), isSkinned ? joints->second : std::vector<int>()};
        const auto [known, isNew] = meshOf_.emplace(key, static_cast<unsigned>(meshes_.size()));
        if (isNew)
            AddMesh(geometry, surface);
        if (isNew && isSkinned)
            AddBones(geometry, NamesOf(joints->second), *meshes_[known->second]);
        return known->second;
    }

    std::vector<std::string> NamesOf(const std::vector<int>& joints)
    {
        std::vector<std::string> names;
        names.reserve(joints.size());
        for (const int joint : joints)
            names.emplace_back(nodes_[At(nodeOf_, joint)].node->mName.C_Str());
        return names;
    }

    unsigned AddMesh(Geometry& geometry, Surface& surface)
    {
        std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
        const std::string name = geometry.GetName();
        mesh->mName = FileText(name.empty() ? surface.GetName() : name);
        mesh->mMaterialIndex = materials_.Find(surface);
        meshes_.push_back(std::move(mesh));
        return static_cast<unsigned>(meshes_.size() - 1);
    }

    void AddCamerasAndLights(Node& node, std::size_t target)
    {
        const bool only = node.CameraList.size() + node.LightList.size() == 1 && HasOwnName(*nodes_[target].node);
        for (const std::int32_t index : node.CameraList)
        {
            Importing::Camera& camera = At(scene_.CameraLibrary, index);
            const std::size_t place = only ? target : AddChild(target, UniqueName(camera.GetName(), "camera"));
            cameras_.push_back(ConvertCamera(camera, nodes_[place].node->mName.C_Str()));
        }
        for (const std::int32_t index : node.LightList)
        {
            Importing::Light& light = At(scene_.LightLibrary, index);
            const std::size_t place = only ? target : AddChild(target, UniqueName(light.GetName(), "light"));
            lights_.push_back(ConvertLight(light, nodes_[place].node->mName.C_Str()));
        }
    }

    void AddAnimation(int animation, std::size_t target)
    {
        if (!Importing::IsValidIndex(animation, scene_.AnimationLibrary.size()))
            return;
        std::vector<Importing::Key>& keys = At(scene_.AnimationLibrary, animation);
        if (!keys.empty())
            channels_.push_back(ConvertAnimation(keys, nodes_[target].node->mName.C_Str()));
    }

    /// Files tie movements and bones to nodes by name, so a node that moves or is a joint needs a name of its own.
    std::string FileNameOf(int index)
    {
        Node& node = At(scene_.NodeLibrary, index);
        const std::string name = FileText(node.GetName());
        const bool isTied = node.GetAnimationID() >= 0 || isJoint_.count(index) > 0;
        return isTied && (name.empty() || nameUses_[name] > 1) ? UniqueName(name, "animated") : name;
    }

    std::string FileText(const std::string& name) const { return ExportName(name, format_); }

    bool HasOwnName(const aiNode& node) { return node.mName.length > 0 && nameUses_[node.mName.C_Str()] == 1; }

    std::string UniqueName(const std::string& wanted, const char* otherwise)
    {
        const std::string text = FileText(wanted);
        const std::string plain = text.empty() ? otherwise : text;
        std::string unique = plain;
        for (int number = 2; nameUses_[unique] > 0; ++number)
            unique = fmt::format("{}_{}", plain, number);
        ++nameUses_[unique];
        return unique;
    }

    std::size_t AddNode(const std::string& name, const aiMatrix4x4& matrix)
    {
        auto node = std::make_unique<aiNode>(FileText(name));
        node->mTransformation = matrix;
        nodes_.push_back({std::move(node), {}});
        return nodes_.size() - 1;
    }

    std::size_t AddChild(std::size_t parent, const std::string& name)
    {
        const std::size_t child = AddNode(name, aiMatrix4x4());
        nodes_[parent].children.push_back(child);
        return child;
    }

    void SetMesh(std::size_t node, unsigned mesh)
    {
        nodes_[node].node->mMeshes = new unsigned[1]{mesh};
        nodes_[node].node->mNumMeshes = 1;
    }

    std::unique_ptr<aiScene> Assemble()
    {
        auto target = std::make_unique<aiScene>();
        target->mFlags = FlagsOf(meshes_);
        MoveInto(meshes_, target->mMeshes, target->mNumMeshes);
        materials_.MoveTo(*target);
        MoveInto(cameras_, target->mCameras, target->mNumCameras);
        MoveInto(lights_, target->mLights, target->mNumLights);
        ExportEmbeddedTextures(textures_, *target);
        AssembleAnimation(*target);
        AssembleNodes(*target);
        return target;
    }

    void AssembleAnimation(aiScene& target)
    {
        if (channels_.empty())
            return;
        std::vector<std::unique_ptr<aiAnimation>> animations;
        aiAnimation& animation = *animations.emplace_back(std::make_unique<aiAnimation>());
        animation.mTicksPerSecond = kTicksPerSecond;
        animation.mDuration = 0;
        for (const std::unique_ptr<aiNodeAnim>& channel : channels_)
            animation.mDuration =
                std::max(animation.mDuration, channel->mPositionKeys[channel->mNumPositionKeys - 1].mTime);
        MoveInto(channels_, animation.mChannels, animation.mNumChannels);
        MoveInto(animations, target.mAnimations, target.mNumAnimations);
    }

    void AssembleNodes(aiScene& target)
    {
        target.mRootNode = nodes_.front().node.get();
        for (FileNode& entry : nodes_)
        {
            std::vector<aiNode*> children;
            for (const std::size_t child : entry.children)
                children.push_back(nodes_[child].node.get());
            if (!children.empty())
                entry.node->addChildren(static_cast<unsigned>(children.size()), children.data());
        }
        for (FileNode& entry : nodes_)
            static_cast<void>(entry.node.release());  // the root's now
    }

    SceneContainer& scene_;
    const Textures& textures_;
    const WriteFormat& format_;
    NodeWalk walk_;
    MaterialExporter materials_;
    std::vector<FileNode> nodes_;      // the first is the root
    std::vector<std::size_t> nodeOf_;  // by node of the scene, then joint nodes
    std::optional<Skeletons> skeletons_;
    std::map<std::pair<int, int>, std::vector<int>> jointsOf_;  // by geometry and node that shows it
    std::set<int> isJoint_;
    std::map<std::string, int> nameUses_;
    std::vector<std::unique_ptr<aiMesh>> meshes_;
    std::map<MeshKey, unsigned> meshOf_;
    std::vector<std::unique_ptr<aiCamera>> cameras_;
    std::vector<std::unique_ptr<aiLight>> lights_;
    std::vector<std::unique_ptr<aiNodeAnim>> channels_;
};

}  // namespace

bool IsWrittenFlat(SceneContainer& scene, const WriteFormat& format)
{
    if (format.IsFlat() || format.HoldsShear())
        return format.IsFlat();
    const NodeWalk walk = WalkFromRoot(scene);
    return std::any_of(walk.order.begin(), walk.order.end(), [&](int node) {
        return !IsShearFree(At(scene.NodeLibrary, node).GetLocalTransform().GetMatrix());
    });
}

std::unique_ptr<aiScene> BuildExportScene(SceneContainer& scene, const Textures& textures, const WriteFormat& format)
{
    return SceneExporter(scene, textures, format).Build();
}

}  // namespace Sceneprep

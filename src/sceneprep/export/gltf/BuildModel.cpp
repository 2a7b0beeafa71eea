#include <sceneprep/export/gltf/BuildModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/assimp/SurfaceExtras.h>
#include <sceneprep/export/gltf/Animations.h>
#include <sceneprep/export/gltf/Extensions.h>
#include <sceneprep/export/gltf/Materials.h>
#include <sceneprep/export/gltf/Meshes.h>
#include <sceneprep/export/gltf/Objects.h>
#include <sceneprep/export/gltf/Placement.h>
#include <sceneprep/export/gltf/Skins.h>
#include <sceneprep/export/gltf/Utf8.h>

#include <fmt/ranges.h>

#include <map>
#include <optional>
#include <utility>

namespace Sceneprep::Gltf
{

using Pipeline::ListSkinnedMeshes;
using Pipeline::NodeWalk;
using Pipeline::PartCounter;
using Pipeline::PartListener;
using Pipeline::SkinnedMesh;
using Pipeline::WalkFromRoot;

namespace
{

using Importing::At;
using Importing::SceneContainer;
using Importing::Surface;
using tinygltf::Value;

void SetExtra(const char* key, Value value, tinygltf::Node& node)
{
    Value::Object extras = node.extras.IsObject() ? node.extras.Get<Value::Object>() : Value::Object();
    extras[key] = std::move(value);
    node.extras = Value(std::move(extras));
}

void SetExtras(Surface& surface, Importing::Geometry& geometry, tinygltf::Node& node)
{
    const std::string name = surface.GetName();
    if (!name.empty() && name != geometry.GetName())
        SetExtra("surfaceName", Value(ToUtf8(name)), node);
    if (surface.GetCollisionOffset() != 0)
        SetExtra("collisionOffset", Value(surface.GetCollisionOffset()), node);
}

class ModelBuilder
{
public:
    ModelBuilder(SceneContainer& scene, const Textures& textures, const std::string& stem, bool isBinary,
                 const PartListener& listener)
        : scene_(scene), walk_(WalkFromRoot(scene)), counter_(listener, CountSurfaces()), buffers_(model_),
          images_(scene, textures, stem, isBinary, buffers_, model_), materials_(scene, images_, model_),
          meshes_(scene, buffers_, model_), animations_(buffers_, model_),
          skins_(scene, walk_, buffers_, animations_, model_)
    {}

    BuiltModel Build()
    {
        model_.asset.version = "2.0";
        model_.asset.generator = "sceneprep";
        AddScene();
        AnnounceSkins();
        AddNodes();
        skins_.AddJointNodes(carrierOf_);
        for (const int node : walk_.order)
            Fill(node);
        animations_.Finish();
        return {std::move(model_), images_.Companions(), Notes()};
    }

private:
    std::size_t CountSurfaces() const
    {
        std::size_t count = 0;
        for (const int node : walk_.order)
            count += At(scene_.NodeLibrary, node).SurfaceList.size();
        return count;
    }

    void AddScene()
    {
        if (walk_.order.empty())
            return;
        tinygltf::Scene target;
        target.name = ToUtf8(scene_.GetName());
        target.nodes = {0};
        model_.scenes.push_back(std::move(target));
        model_.defaultScene = 0;
    }

    void AnnounceSkins()
    {
        for (const SkinnedMesh& mesh : ListSkinnedMeshes(scene_, walk_))
        {
            if (HasSkin(mesh.geometry))
                skins_.Announce(mesh.geometry, mesh.node);
        }
    }

    bool HasSkin(int geometry)
    {
        const MeshArrays* arrays = meshes_.Find(geometry);
        return arrays != nullptr && arrays->isSkinned;
    }

    /// The scene's own nodes, parents before children, so that the first is the root; what only the format needs comes
    /// behind them.
    void AddNodes()
    {
        carrierOf_.assign(scene_.NodeLibrary.size(), -1);
        std::vector<std::pair<int, D3DXQUATERNION>> sheared;
        for (const int index : walk_.order)
        {
            Importing::Node& node = At(scene_.NodeLibrary, index);
            const int target = AddNode(skins_.NameOf(index));
            At(carrierOf_, index) = target;
            if (!node.GetNote().empty())
                SetExtra("note", Value(ToUtf8(node.GetNote())), NodeAt(target));
            if (const auto turn = PlaceNode(node, target))
                sheared.emplace_back(index, *turn);
        }
        const std::vector<int> outerOf = carrierOf_;
        for (const auto& [index, turn] : sheared)
            AddInnerTurn(index, turn);
        for (const int index : walk_.order)
        {
            const int parent = At(walk_.parent, index);
            if (parent >= 0)
                NodeAt(At(carrierOf_, parent)).children.push_back(At(outerOf, index));
        }
    }

    std::optional<D3DXQUATERNION> PlaceNode(Importing::Node& node, int target)
    {
        const D3DXMATRIX matrix = node.GetLocalTransform().GetMatrix();
        if (!IsFinite(matrix))
            ++unplaced_;
        std::vector<Importing::Key>* keys = KeysOf(node.GetAnimationID());
        if (keys == nullptr)
            return Place(matrix, NodeAt(target));
        // What moves has to be placed in parts.
        if (IsFinite(matrix))
            SetParts(SplitShearFree(matrix), NodeAt(target));
        animations_.Add(*keys, target);
        return std::nullopt;
    }

    /// All that a sheared node carries hangs below a child that turns it first.
    void AddInnerTurn(int index, const D3DXQUATERNION& turn)
    {
        const int outer = At(carrierOf_, index);
        const int inner = AddNode(NodeAt(outer).name + " (turned)");
        SetRotation(turn, NodeAt(inner));
        NodeAt(outer).children.push_back(inner);
        At(carrierOf_, index) = inner;
    }

    std::vector<Importing::Key>* KeysOf(int animation)
    {
        if (!Importing::IsValidIndex(animation, scene_.AnimationLibrary.size()))
            return nullptr;
        std::vector<Importing::Key>& keys = At(scene_.AnimationLibrary, animation);
        return keys.empty() ? nullptr : &keys;
    }

    void Fill(int filled)
    {
        Importing::Node& node = At(scene_.NodeLibrary, filled);
        const int target = At(carrierOf_, filled);
        AddSurfaces(filled, target);
        for (const std::int32_t index : node.CameraList)
            AddCamera(At(scene_.CameraLibrary, index), target);
        for (const std::int32_t index : node.LightList)
            AddLight(At(scene_.LightLibrary, index), target);
    }

    void AddSurfaces(int node, int target)
    {
        std::vector<Surface*> shown;
        for (const std::int32_t index : At(scene_.NodeLibrary, node).SurfaceList)
        {
            Surface& surface = At(scene_.SurfaceLibrary, index);
            if (surface.GetGeometryID() >= 0 && meshes_.Find(surface.GetGeometryID()) != nullptr)
                shown.push_back(&surface);
            counter_.Add(1);
        }
        for (Surface* surface : shown)
            ShowSurface(*surface, node, shown.size() == 1 ? target : AddChild(target, surface->GetName()));
    }

    void ShowSurface(Surface& surface, int node, int target)
    {
        Importing::Geometry& geometry = At(scene_.GeometryLibrary, surface.GetGeometryID());
        NodeAt(target).mesh = SharedMesh(surface, geometry);
        if (HasSkin(surface.GetGeometryID()))
            NodeAt(target).skin = skins_.Add(surface.GetGeometryID(), node, carrierOf_);
        SetExtras(surface, geometry, NodeAt(target));
    }

    int SharedMesh(Surface& surface, Importing::Geometry& geometry)
    {
        const std::pair<int, int> key(surface.GetGeometryID(),
                                      materials_.Find(surface, *meshes_.Find(surface.GetGeometryID())));
        const auto [found, isNew] = meshByKey_.emplace(key, static_cast<int>(model_.meshes.size()));
        if (isNew)
            AddMesh(surface, geometry, key.second);
        return found->second;
    }

    void AddMesh(Surface& surface, Importing::Geometry& geometry, int material)
    {
        const MeshArrays& arrays = *meshes_.Find(surface.GetGeometryID());
        tinygltf::Primitive primitive;
        primitive.mode = TINYGLTF_MODE_TRIANGLES;
        primitive.attributes = arrays.attributes;
        primitive.indices = arrays.indices;
        primitive.material = material;
        tinygltf::Mesh mesh;
        mesh.name = ToUtf8(geometry.GetName().empty() ? surface.GetName() : geometry.GetName());
        mesh.primitives.push_back(std::move(primitive));
        model_.meshes.push_back(std::move(mesh));
    }

    void AddCamera(Importing::Camera& camera, int target)
    {
        const int place = PlaceObject(camera.GetOffsetMatrix(), camera.GetName(), NodeAt(target).camera >= 0, target);
        model_.cameras.push_back(ConvertCamera(camera));
        NodeAt(place).camera = static_cast<int>(model_.cameras.size() - 1);
    }

    void AddLight(Importing::Light& light, int target)
    {
        const std::optional<tinygltf::Light> converted = ConvertLight(light);
        if (!converted)
        {
            ++lightsLeftOut_;
            return;
        }
        const bool isTaken = NodeAt(target).extensions.count(kLights) > 0;
        const int place = PlaceObject(light.GetOffsetMatrix(), light.GetName(), isTaken, target);
        model_.lights.push_back(*converted);
        Value::Object reference;
        reference["light"] = Value(static_cast<int>(model_.lights.size() - 1));
        AddExtension(kLights, Value(std::move(reference)), model_, NodeAt(place).extensions);
    }

    /// @return the node itself where a camera or light would stand just so, otherwise a child that does.
    int PlaceObject(const Importing::Transform& offset, const std::string& name, bool isTaken, int target)
    {
        tinygltf::Node place;
        const D3DXMATRIX matrix = PlacementOf(offset);
        if (IsFinite(matrix))
            SetMatrix(matrix, place);
        else
            ++unplaced_;
        if (place.matrix.empty() && !isTaken)
            return target;
        place.name = ToUtf8(name);
        model_.nodes.push_back(std::move(place));
        const int child = static_cast<int>(model_.nodes.size() - 1);
        NodeAt(target).children.push_back(child);
        return child;
    }

    int AddNode(const std::string& name)
    {
        model_.nodes.emplace_back().name = ToUtf8(name);
        return static_cast<int>(model_.nodes.size() - 1);
    }

    int AddChild(int parent, const std::string& name)
    {
        const int child = AddNode(name);
        NodeAt(parent).children.push_back(child);
        return child;
    }

    tinygltf::Node& NodeAt(int node) { return model_.nodes[static_cast<std::size_t>(node)]; }

    std::vector<std::string> Notes() const
    {
        const MendedValues& mended = meshes_.Mended();
        std::vector<std::string> notes;
        const auto count = [&notes](std::size_t number, const char* text) {
            if (number > 0)
                notes.push_back(fmt::format("{} ({})", text, number));
        };
        count(mended.triangles, "triangles whose corners are nowhere or at infinity are left out");
        count(mended.normals, "normals without a direction are replaced by those of a face");
        count(mended.texCoords, "texture coordinates that are no numbers are written as (0, 0)");
        count(mended.skins, "skins without weights, or with weights of joints that are not there, are left out");
        count(mended.weights, "vertices whose weights do not add up to 1 get them shared out anew");
        count(unplaced_, "what has a matrix that is not finite is placed where its parent is");
        count(lightsLeftOut_, "lights without a kind are left out");
        if (!materials_.LayersLeftOut().empty())
            notes.push_back(fmt::format(
                "texture layers that glTF has no place for, or the mesh no texture coordinates, are left out: {}",
                fmt::join(materials_.LayersLeftOut(), ", ")));
        if (!images_.LeftOut().empty())
            notes.push_back(fmt::format("pictures that are neither PNG nor JPEG are left out: {}",
                                        fmt::join(images_.LeftOut(), ", ")));
        return notes;
    }

    static constexpr const char* kLights = "KHR_lights_punctual";

    SceneContainer& scene_;
    NodeWalk walk_;
    PartCounter counter_;
    tinygltf::Model model_;
    Buffers buffers_;
    ImageWriter images_;
    MaterialWriter materials_;
    MeshWriter meshes_;
    AnimationWriter animations_;
    SkinWriter skins_;
    std::vector<int> carrierOf_;  // by node of the scene: the node that carries its children and objects
    std::map<std::pair<int, int>, int> meshByKey_;  // by geometry of the scene and material of the file
    std::size_t unplaced_ = 0;
    std::size_t lightsLeftOut_ = 0;
};

}  // namespace

BuiltModel BuildModel(SceneContainer& scene, const Textures& textures, const std::string& stem, bool isBinary,
                      const PartListener& listener)
{
    return ModelBuilder(scene, textures, stem, isBinary, listener).Build();
}

}  // namespace Sceneprep::Gltf

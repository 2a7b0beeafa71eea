#include <sceneprep/import/gltf/Nodes.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/import/gltf/Cameras.h>
#include <sceneprep/import/gltf/Instances.h>
#include <sceneprep/import/gltf/Lights.h>
#include <sceneprep/import/gltf/LocalMatrix.h>
#include <sceneprep/import/gltf/SurfaceValues.h>

#include <string>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::At;

constexpr const char* kLights = "KHR_lights_punctual";
constexpr const char* kInstancing = "EXT_mesh_gpu_instancing";

D3DXMATRIX Identity()
{
    D3DXMATRIX identity;
    return *D3DXMatrixIdentity(&identity);
}

/// Leaves in a node's object what the container does not hold.
void Strip(Json& node)
{
    for (const char* key : {"children", "mesh", "skin", "camera"})
        Take(node, key);
    const auto extensions = node.find("extensions");
    if (extensions == node.end())
        return;
    extensions->erase(kLights);
    extensions->erase(kInstancing);
    if (extensions->empty())
        Take(node, "extensions");
}

/// Gives an added node a key, and the morph target weights of the node of another key.
void CarryWeights(int key, int node, Model& model)
{
    CarriedNode carried{.local = At(model.scene->NodeLibrary, node).GetLocalTransform().GetMatrix()};
    carried.object["weights"] = At(model.carried.nodes, key).object["weights"];
    At(model.supplement.nodeKeys, node) = static_cast<int>(model.carried.nodes.size());
    model.carried.nodes.push_back(std::move(carried));
}

}  // namespace

Nodes::Nodes(const Field& document, Accessors& accessors, Meshes& meshes, Model& model)
    : document_(document), list_(document.Find("nodes")), meshCount_(document.SizeOf("meshes")),
      skinCount_(document.SizeOf("skins")), cameraCount_(document.SizeOf("cameras")), accessors_(accessors),
      meshes_(meshes), model_(model), local_(document.SizeOf("nodes"), Identity()), skin_(document.SizeOf("nodes"), -1),
      isRead_(document.SizeOf("nodes"), false)
{}

SceneNodes Nodes::Read(const NodeTree& tree, const ChosenScene& scene)
{
    SceneNodes nodes{.nodeOf = std::vector<int>(tree.parent.size(), -1)};
    model_.scene->NodeLibrary.reserve(tree.parent.size() + 1);
    struct Pending
    {
        int key;
        int parent;
    };
    int root = -1;
    model_.carried.hasMadeRoot = scene.roots.size() != 1;
    if (model_.carried.hasMadeRoot)
        root = AddBareNode("Root", Identity(), -1, -1);
    std::vector<Pending> pending;
    for (auto node = scene.roots.rbegin(); node != scene.roots.rend(); ++node)
        pending.push_back({*node, root});
    while (!pending.empty())
    {
        const auto [key, parent] = pending.back();
        pending.pop_back();
        const auto file = static_cast<std::size_t>(key);
        const Field field = list_->Element(file);
        const int node = AddNode(field, key, parent);
        nodes.nodeOf[file] = node;
        AddSurfaces(field, node, nodes);
        AddCameras(field, node);
        AddLights(field, node);
        const std::vector<int>& children = tree.children[file];
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, node});
    }
    return nodes;
}

int Nodes::AddNode(const Field& field, int key, int parent)
{
    isRead_[static_cast<std::size_t>(key)] = true;
    D3DXMATRIX& local = local_[static_cast<std::size_t>(key)];
    local = LocalMatrix(field);
    return AddBareNode(field.TextOr("name", ""), local, key, parent);
}

int Nodes::AddBareNode(const std::string& name, const D3DXMATRIX& local, int key, int parent)
{
    Importing::Node node;
    node.SetName(name);
    node.SetLocalTransform(Importing::Transform(local));
    std::vector<Importing::Node>& library = model_.scene->NodeLibrary;
    const int index = static_cast<int>(library.size());
    library.push_back(std::move(node));
    model_.supplement.nodeKeys.push_back(key);
    if (parent >= 0)
        At(library, parent).ChildList.push_back(index);
    else
        model_.scene->SetRootNodeIndex(index);
    return index;
}

void Nodes::AddSurfaces(const Field& field, int node, SceneNodes& nodes)
{
    const int mesh = field.IndexOrNone("mesh", meshCount_);
    const int skin = field.IndexOrNone("skin", skinCount_);
    if (mesh < 0)
        return;
    skin_[static_cast<std::size_t>(At(model_.supplement.nodeKeys, node))] = skin;
    const std::optional<Field> instancing = field.Has("extensions") ? field.Extension(kInstancing) : std::nullopt;
    if (!instancing)
    {
        AddMesh(field, mesh, skin, node, nodes);
        return;
    }
    const Instances instances = ReadInstances(*instancing, accessors_);
    instanceAttributes_ += instances.attributesWithoutUse;
    for (const D3DXMATRIX& local : instances.local)
    {
        const int instance = AddBareNode(field.TextOr("name", ""), local, -1, node);
        AddMesh(field, mesh, -1, instance, nodes);
        if (field.Has("weights"))
            weightedInstances_.emplace_back(instance, At(model_.supplement.nodeKeys, node));
    }
}

void Nodes::AddMesh(const Field& field, int mesh, int skin, int node, SceneNodes& nodes)
{
    std::size_t joints = 0;
    if (skin >= 0)
        joints = document_.Member("skins").Element(static_cast<std::size_t>(skin)).SizeOf("joints");
    for (const Importing::Surface& shared : meshes_.SurfacesOf(mesh, skin, joints))
    {
        Importing::Surface surface = shared;
        if (HasSurfaceValues(field.Get()))
        {
            Json object = {{"extras", field.Get()["extras"]}};
            TakeSurfaceValues(object, surface);
        }
        const int index = model_.scene->AddSurfaceToLibrary(std::move(surface), false);
        At(model_.scene->NodeLibrary, node).SurfaceList.push_back(index);
        if (skin >= 0)
            nodes.skinned.push_back({index, node, skin});
    }
}

void Nodes::AddCameras(const Field& field, int node)
{
    const int camera = field.IndexOrNone("camera", cameraCount_);
    if (camera < 0)
        return;
    std::vector<Importing::Camera>& library = model_.scene->CameraLibrary;
    At(model_.scene->NodeLibrary, node).CameraList.push_back(static_cast<int>(library.size()));
    library.push_back(ConvertCamera(document_.Member("cameras").Element(static_cast<std::size_t>(camera))));
    model_.carried.cameraOf.push_back(
        {.object = camera, .nodeName = field.TextOr("name", ""), .isOwnNode = IsOwnNode(field)});
}

void Nodes::AddLights(const Field& field, int node)
{
    const std::optional<Field> use = field.Has("extensions") ? field.Extension(kLights) : std::nullopt;
    if (!use)
        return;
    const std::optional<Field> list = document_.Extension(kLights);
    const int light = use->Member("light").IndexBelow(list ? list->SizeOf("lights") : 0);
    std::vector<Importing::Light>& library = model_.scene->LightLibrary;
    At(model_.scene->NodeLibrary, node).LightList.push_back(static_cast<int>(library.size()));
    library.push_back(ConvertLight(list->Member("lights").Element(static_cast<std::size_t>(light))));
    model_.carried.lightOf.push_back(
        {.object = light, .nodeName = field.TextOr("name", ""), .isOwnNode = IsOwnNode(field)});
}

/// @return whether a node shows one camera or light and nothing else.
bool Nodes::IsOwnNode(const Field& field) const
{
    const bool showsLight = field.Extension(kLights).has_value();
    return !field.Has("mesh") && !(field.Has("camera") && showsLight);
}

void Nodes::AddNotes(Notes& notes) const
{
    notes.AddLoss("instance-attributes", "dropped attributes of instances other than their transform",
                  instanceAttributes_);
}

void Nodes::CarryNodes(Json& nodes)
{
    model_.carried.nodes.reserve(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
    {
        Json& node = nodes[i];
        if (skin_[i] >= 0 || node.contains("mesh"))
        {
            Importing::Surface unused;
            TakeSurfaceValues(node, unused);
        }
        Strip(node);
        if (!isRead_[i])
            node = Json::object();
        model_.carried.nodes.push_back({.object = std::move(node), .local = local_[i], .skin = skin_[i]});
    }
    for (const auto& [instance, key] : weightedInstances_)
        CarryWeights(key, instance, model_);
}

}  // namespace Sceneprep::GltfImport

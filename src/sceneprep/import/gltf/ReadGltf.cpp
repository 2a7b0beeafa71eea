#include <sceneprep/import/gltf/ReadGltf.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Buffers.h>
#include <sceneprep/import/gltf/Clips.h>
#include <sceneprep/import/gltf/Extensions.h>
#include <sceneprep/import/gltf/Images.h>
#include <sceneprep/import/gltf/Materials.h>
#include <sceneprep/import/gltf/Meshes.h>
#include <sceneprep/import/gltf/NodeAnimations.h>
#include <sceneprep/import/gltf/NodeTree.h>
#include <sceneprep/import/gltf/Nodes.h>
#include <sceneprep/import/gltf/Skins.h>
#include <sceneprep/run/Error.h>

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace Sceneprep
{

namespace GltfImport
{

namespace
{

constexpr std::array<std::string_view, 13> kLists = {"accessors", "animations", "bufferViews", "buffers", "cameras",
                                                     "images",    "materials",  "meshes",      "nodes",   "samplers",
                                                     "scenes",    "skins",      "textures"};

/// Checks that an object's extensions are an object.
void CheckExtensions(const Field& object)
{
    if (const std::optional<Field> extensions = object.Find("extensions"))
        extensions->Members();
}

/// Checks that the lists of the document are lists of objects, also those that are not read but carried.
void CheckLists(const Field& document)
{
    CheckExtensions(document);
    for (const std::string_view list : kLists)
    {
        const std::optional<Field> objects = document.Find(list);
        for (std::size_t i = 0; objects && i < objects->Size(); ++i)
            CheckExtensions(objects->Element(i));
    }
    if (const std::optional<Field> lights = document.Extension("KHR_lights_punctual"))
        lights->SizeOf("lights");
}

void CarryScene(const Field& document, const ChosenScene& chosen, Model& model)
{
    const std::size_t count = document.SizeOf("scenes");
    if (chosen.index >= 0)
    {
        model.carried.scene = document.Member("scenes").Element(static_cast<std::size_t>(chosen.index)).Get();
        Take(model.carried.scene, "nodes");
    }
    model.notes.AddLoss("scenes", "dropped further scenes of the file; --scene chooses another one",
                        count > 1 ? count - 1 : 0);
}

/// Moves a list of the document.
void MoveList(Json& document, const char* key, std::vector<Json>& list)
{
    Json taken = Take(document, key);
    for (Json& object : taken)
        list.push_back(std::move(object));
}

/// Moves what is carried as it is. The document is incomplete afterwards.
void MoveObjects(Json& document, Nodes& nodes, Meshes& meshes, Carried& carried)
{
    MoveList(document, "materials", carried.materials);
    MoveList(document, "textures", carried.textures);
    MoveList(document, "samplers", carried.samplers);
    MoveList(document, "cameras", carried.cameras);
    const auto extensions = document.find("extensions");
    if (extensions != document.end() && extensions->contains("KHR_lights_punctual"))
        MoveList((*extensions)["KHR_lights_punctual"], "lights", carried.lights);
    const auto meshList = document.find("meshes");
    if (meshList != document.end())
        meshes.CarryMeshes(*meshList);
    const auto nodeList = document.find("nodes");
    if (nodeList != document.end())
        nodes.CarryNodes(*nodeList);
}

void Read(GltfFile& file, Model& model, const GltfReadOptions& options, const Pipeline::PartListener& listener)
{
    const Field document(file.document, {});
    CheckLists(document);
    CheckRequired(document);
    const NodeTree tree = ReadNodeTree(document);
    const ChosenScene chosen = ChooseScene(document, tree, options.scene);

    Buffers buffers(document, file.path, std::move(file.binary));
    BufferViews views(document, buffers);
    Accessors accessors(document, views);
    CarryDocument(document, views, model.carried);
    CarryScene(document, chosen, model);
    ReadImages(document, views, model);
    Materials materials(document, model);
    Meshes meshes(document, accessors, views, materials, model, listener);
    Nodes nodes(document, accessors, meshes, model);
    const SceneNodes sceneNodes = nodes.Read(tree, chosen);
    CarrySkins(document, accessors, model.carried);
    CarryClips(document, accessors, model.carried);
    AddNodeAnimations(document, sceneNodes, model);
    MarkKeptNodes(document, sceneNodes, model);
    meshes.AddNotes(model.notes);
    nodes.AddNotes(model.notes);
    MoveObjects(file.document, nodes, meshes, model.carried);
    PlaceSkins(sceneNodes, model);
}

}  // namespace

}  // namespace GltfImport

void ReadGltf(GltfFile file, Model& model, const GltfReadOptions& options, const Pipeline::PartListener& listener)
{
    model.file = file.path;
    model.scene->SetName(file.path.stem().string());
    try
    {
        GltfImport::Read(file, model, options, listener);
    }
    catch (const GltfImport::FormatError& error)
    {
        throw ToolError(fmt::format("cannot read {}: {}", file.path.string(), OneLine(error.what())));
    }
}

}  // namespace Sceneprep

#include <sceneprep/import/AppendModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/model/AppendCarried.h>
#include <sceneprep/model/TextureReferences.h>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Sceneprep
{

namespace
{

/// Returns a reference that stays unambiguous next to the images of other models: "*N" for an embedded image, whose
/// index is increased by `before`, and a path that does not begin with "*" for a file.
std::string Distinct(const Textures& textures, const std::string& reference, std::size_t before)
{
    if (const EmbeddedTexture* image = FindEmbedded(textures, reference))
        return fmt::format("*{}", before + static_cast<std::size_t>(image - textures.embedded.data()));
    return reference.starts_with('*') ? "./" + reference : reference;
}

void MakeReferencesDistinct(Model& model)
{
    for (std::string& entry : model.scene->TextureLibrary)
    {
        const std::string before = SpellingOf(model.textures, entry);
        const std::string spelling = Distinct(model.textures, before, 0);
        if (spelling == before)
            continue;
        entry = spelling.starts_with('*') ? spelling : "./" + entry;
        model.textures.spelling.emplace(entry, spelling);
    }
}

/// Clears the names of embedded images that a texture file or another image has too, since a name would find the wrong
/// one. Every reference to an embedded image is an index by now.
void DropSharedNames(Model& model)
{
    std::map<std::string, int> uses;
    for (const std::string& entry : model.scene->TextureLibrary)
        ++uses[FileNameOf(SpellingOf(model.textures, entry))];
    for (const EmbeddedTexture& image : model.textures.embedded)
        ++uses[FileNameOf(image.fileName)];
    for (EmbeddedTexture& image : model.textures.embedded)
    {
        if (uses[FileNameOf(image.fileName)] > 1)
            image.fileName.clear();
    }
}

/// Brings the textures and embedded images of the other model into the first one, and the other's texture library into
/// the form that SceneContainer::AppendSC() joins.
void AppendTextures(Model& first, Model& other)
{
    MakeReferencesDistinct(first);
    const std::size_t images = first.textures.embedded.size();
    for (std::string& entry : other.scene->TextureLibrary)
    {
        const std::string reference = Distinct(other.textures, SpellingOf(other.textures, entry), images);
        const std::string spelling =
            reference.starts_with('*') ? reference : RebasedReference(reference, other.file, first.file);
        const int index = first.scene->AddTextureToLibrary(spelling, true);
        entry = Importing::At(first.scene->TextureLibrary, index);
        first.textures.spelling.emplace(entry, spelling);
    }
    for (EmbeddedTexture& image : other.textures.embedded)
        first.textures.embedded.push_back(std::move(image));
}

/// Keeps materials apart that look alike in the container and differ in what is carried of them: during its lifetime,
/// their names end with a tag that says what is carried.
class MaterialTags
{
public:
    void Add(Importing::SceneContainer& scene, const std::vector<CarriedMaterial>& carried)
    {
        for (std::size_t i = 0; i < scene.MaterialLibrary.size(); ++i)
        {
            Importing::Material& material = scene.MaterialLibrary[i];
            material.SetName(material.GetName() + kMark + std::to_string(TagOf(MaterialAt(carried, i))));
        }
    }

    /// Restores the names.
    /// @return what is carried of each material
    std::vector<CarriedMaterial> Remove(Importing::SceneContainer& scene) const
    {
        std::vector<CarriedMaterial> carried;
        for (Importing::Material& material : scene.MaterialLibrary)
        {
            const std::string name = material.GetName();
            const std::size_t mark = name.rfind(kMark);
            carried.push_back(materials_.at(std::stoul(name.substr(mark + 1))));
            material.SetName(name.substr(0, mark));
        }
        return carried;
    }

private:
    static constexpr char kMark = '\x1f';

    static CarriedMaterial MaterialAt(const std::vector<CarriedMaterial>& carried, std::size_t index)
    {
        return index < carried.size() ? carried[index] : CarriedMaterial();
    }

    std::size_t TagOf(const CarriedMaterial& material)
    {
        const auto [entry, isNew] =
            tags_.try_emplace({material.material, material.primitive, material.patch}, materials_.size());
        if (isNew)
            materials_.push_back(material);
        return entry->second;
    }

    std::map<std::tuple<int, Json, Json>, std::size_t> tags_;
    std::vector<CarriedMaterial> materials_;
};

/// Appends the scenes, their materials as MaterialTags says.
void AppendScenes(Model& first, Model& other, const std::vector<CarriedMaterial>& otherMaterials)
{
    if (first.carried.materialOf.empty() && otherMaterials.empty())
    {
        first.scene->AppendSC(other.scene.get());
        return;
    }
    MaterialTags tags;
    tags.Add(*first.scene, first.carried.materialOf);
    tags.Add(*other.scene, otherMaterials);
    first.scene->AppendSC(other.scene.get());
    first.carried.materialOf = tags.Remove(*first.scene);
}

/// Appends a list that may be shorter than the library that it describes.
template <typename List, typename T>
void AppendEntries(List& first, std::size_t firstSize, const List& other, const T& missing)
{
    if (other.empty())
        return;
    first.resize(firstSize, missing);
    first.insert(first.end(), other.begin(), other.end());
}

std::vector<int> Shifted(std::vector<int> keys, int base)
{
    for (int& key : keys)
        key = key < 0 ? key : key + base;
    return keys;
}

/// @param nodes, meshes  how many the first scene had before the other one was appended
void AppendSupplement(Pipeline::SceneSupplement& first, const Pipeline::SceneSupplement& other, std::size_t nodes,
                      std::size_t meshes, const AppendedKeys& keys)
{
    AppendEntries(first.layouts, meshes, other.layouts, Pipeline::VertexLayout());
    AppendEntries(first.pinnedMeshes, meshes, other.pinnedMeshes, false);
    AppendEntries(first.meshKeys, meshes, Shifted(other.meshKeys, keys.meshes), -1);
    AppendEntries(first.keptNodes, nodes, other.keptNodes, false);
    AppendEntries(first.nodeKeys, nodes, Shifted(other.nodeKeys, keys.nodes), -1);
}

/// Replaces a root that the import made by its children, below the root that SceneContainer::AppendSC() made.
void RemoveMadeRoot(Importing::SceneContainer& scene, int madeRoot)
{
    std::vector<std::int32_t>& siblings = Importing::At(scene.NodeLibrary, scene.GetRootNodeIndex()).ChildList;
    const auto found = std::find(siblings.begin(), siblings.end(), madeRoot);
    if (found == siblings.end())
        return;
    std::vector<std::int32_t>& children = Importing::At(scene.NodeLibrary, madeRoot).ChildList;
    const std::vector<std::int32_t> moved = std::exchange(children, {});
    siblings.insert(siblings.erase(found), moved.begin(), moved.end());
}

}  // namespace

void AppendModel(Model& first, Model other)
{
    const auto images = static_cast<int>(first.textures.embedded.size());
    const std::size_t nodes = first.scene->NodeLibrary.size();
    const std::size_t meshes = first.scene->GeometryLibrary.size();
    const int firstRoot = first.carried.hasMadeRoot ? first.scene->GetRootNodeIndex() : -1;
    const int otherRoot = other.carried.hasMadeRoot ? other.scene->GetRootNodeIndex() + static_cast<int>(nodes) : -1;

    AppendTextures(first, other);
    const AppendedKeys keys =
        AppendCarried(first.carried, std::move(other.carried),
                      {.embedded = images, .file = first.file, .otherFile = other.file}, other.notes);
    AppendScenes(first, other, keys.materials);
    AppendSupplement(first.supplement, other.supplement, nodes, meshes, keys);
    for (const int madeRoot : {firstRoot, otherRoot})
        RemoveMadeRoot(*first.scene, madeRoot);
    first.carried.hasMadeRoot = false;
    DropSharedNames(first);
    first.notes.Append(std::move(other.notes));
}

}  // namespace Sceneprep

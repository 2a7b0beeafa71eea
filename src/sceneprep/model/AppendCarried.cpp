// Each list of the other model is appended to the first one's, after the references in its objects have been
// renumbered. The order matters: an object is compared with those of the first model once its references are final, so
// samplers and images come before textures, and textures before materials. Equality then needs no resolving of
// references.

#include <sceneprep/model/AppendCarried.h>

#include <sceneprep/model/JsonReferences.h>
#include <sceneprep/model/TextureReferences.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace Sceneprep
{

namespace
{

using Indices = std::vector<int>;

template <typename T>
int SizeOf(const std::vector<T>& list)
{
    return static_cast<int>(list.size());
}

Renumber ByTable(const Indices& table)
{
    return [&table](int index) {
        return index >= 0 && index < SizeOf(table) ? table[static_cast<std::size_t>(index)] : index;
    };
}

Renumber ByOffset(int offset)
{
    return [offset](int index) { return index < 0 ? index : index + offset; };
}

template <typename T>
void MoveToEnd(std::vector<T>& first, std::vector<T>& other)
{
    first.insert(first.end(), std::make_move_iterator(other.begin()), std::make_move_iterator(other.end()));
}

/// Appends objects to a list, and reuses equal ones.
class Interning
{
public:
    /// @param isSeparate  [list] objects that must not be reused
    explicit Interning(std::vector<Json>& list, const std::set<int>& separate = {}) : list_(list)
    {
        for (int i = 0; i < SizeOf(list); ++i)
        {
            if (separate.count(i) == 0)
                known_.try_emplace(list[static_cast<std::size_t>(i)], i);
        }
    }

    int Add(Json object)
    {
        const auto [entry, isNew] = known_.try_emplace(object, SizeOf(list_));
        if (isNew)
            list_.push_back(std::move(object));
        return entry->second;
    }

    int AddSeparate(Json object)
    {
        list_.push_back(std::move(object));
        return SizeOf(list_) - 1;
    }

private:
    std::vector<Json>& list_;
    std::map<Json, int> known_;
};

/// Returns the materials that a clip changes.
std::set<int> AnimatedMaterials(const Carried& carried)
{
    std::set<int> animated;
    for (const CarriedClip& clip : carried.clips)
    {
        for (const CarriedChannel& channel : clip.channels)
        {
            static_cast<void>(RenumberPointer(channel.pointer, [&](const std::string& list, int index) {
                if (list == "materials")
                    animated.insert(index);
                return index;
            }));
        }
    }
    return animated;
}

/// Appends the lists, with tables from the indices of the other model to those of the first.
class Appending
{
public:
    Appending(Carried& first, Carried other, const AppendedBases& bases, Notes& notes)
        : first_(first), other_(std::move(other)), bases_(bases), notes_(notes)
    {}

    AppendedKeys Run()
    {
        AppendVariants();
        AppendTextures();
        AppendMaterials();
        AppendNodes();
        AppendClips();
        AppendDocument();
        return std::move(keys_);
    }

private:
    void AppendVariants();
    void AppendTextures();
    void AppendImages();
    void AppendMaterials();
    void AppendNodes();
    void AppendClips();
    void AppendDocument();
    void AppendExtensions();
    void AppendMissing(Json& first, Json other, const std::string& owner);
    int RenumberTarget(const std::string& list, int index) const;

    Carried& first_;
    Carried other_;
    const AppendedBases& bases_;
    Notes& notes_;
    AppendedKeys keys_;
    Indices variants_, samplers_, images_, textures_, materials_;
    int cameras_ = 0;
    int lights_ = 0;
    int meshes_ = 0;
    int skins_ = 0;
};

/// Returns the list of variants of a document, which becomes an array if there is none.
Json& VariantsOf(Json& extensions)
{
    Json& variants = extensions["KHR_materials_variants"]["variants"];
    if (!variants.is_array())
        variants = Json::array();
    return variants;
}

void Appending::AppendVariants()
{
    if (!other_.extensions.contains("KHR_materials_variants"))
        return;
    std::vector<Json> joined = VariantsOf(first_.extensions).get<std::vector<Json>>();
    Interning interning(joined);
    for (const Json& variant : VariantsOf(other_.extensions))
        variants_.push_back(interning.Add(variant));
    VariantsOf(first_.extensions) = joined;
    other_.extensions.erase("KHR_materials_variants");
}

void Appending::AppendImages()
{
    using Key = std::pair<Json, std::string>;
    std::map<Key, int> known;
    for (int i = 0; i < SizeOf(first_.images); ++i)
    {
        const CarriedImage& image = first_.images[static_cast<std::size_t>(i)];
        if (!image.file.empty())
            known.try_emplace(Key(image.object, image.file.generic_string()), i);
    }
    for (CarriedImage& image : other_.images)
    {
        if (image.embedded >= 0)
            image.embedded += bases_.embedded;
        image.file = RebasedReference(image.file.generic_string(), bases_.otherFile, bases_.file);
        int index = SizeOf(first_.images);
        if (!image.file.empty())
            index = known.try_emplace(Key(image.object, image.file.generic_string()), index).first->second;
        images_.push_back(index);
        if (index == SizeOf(first_.images))
            first_.images.push_back(std::move(image));
    }
}

void Appending::AppendTextures()
{
    Interning samplers(first_.samplers);
    for (Json& sampler : other_.samplers)
        samplers_.push_back(samplers.Add(std::move(sampler)));
    AppendImages();
    Interning textures(first_.textures);
    for (Json& texture : other_.textures)
    {
        RenumberMember(texture, "sampler", ByTable(samplers_));
        RenumberMember(texture, "source", ByTable(images_));
        if (texture.contains("extensions"))
        {
            for (auto& [name, extension] : texture["extensions"].items())
                RenumberMember(extension, "source", ByTable(images_));
        }
        textures_.push_back(textures.Add(std::move(texture)));
    }
}

void Appending::AppendMaterials()
{
    const std::set<int> separate = AnimatedMaterials(other_);
    Interning materials(first_.materials, AnimatedMaterials(first_));
    for (int i = 0; i < SizeOf(other_.materials); ++i)
    {
        Json& material = other_.materials[static_cast<std::size_t>(i)];
        RenumberTextures(material, ByTable(textures_));
        materials_.push_back(separate.count(i) > 0 ? materials.AddSeparate(std::move(material))
                                                   : materials.Add(std::move(material)));
    }
    for (CarriedMaterial& material : other_.materialOf)
    {
        material.material = ByTable(materials_)(material.material);
        RenumberTextures(material.primitive, ByTable(textures_));
        RenumberVariants(material.primitive, ByTable(materials_), ByTable(variants_));
    }
    keys_.materials = std::move(other_.materialOf);
}

void Appending::AppendNodes()
{
    keys_.nodes = SizeOf(first_.nodes);
    keys_.meshes = SizeOf(first_.meshOf);
    cameras_ = SizeOf(first_.cameras);
    lights_ = SizeOf(first_.lights);
    meshes_ = SizeOf(first_.meshes);
    skins_ = SizeOf(first_.skins);
    const Renumber node = ByOffset(keys_.nodes);
    for (CarriedNode& carried : other_.nodes)
        carried.skin = ByOffset(skins_)(carried.skin);
    for (CarriedMesh& carried : other_.meshOf)
        carried.mesh = ByOffset(meshes_)(carried.mesh);
    for (CarriedObject& carried : other_.cameraOf)
        carried.object = ByOffset(cameras_)(carried.object);
    for (CarriedObject& carried : other_.lightOf)
        carried.object = ByOffset(lights_)(carried.object);
    for (CarriedSkin& skin : other_.skins)
    {
        std::transform(skin.joints.begin(), skin.joints.end(), skin.joints.begin(), node);
        skin.skeleton = node(skin.skeleton);
    }
    MoveToEnd(first_.nodes, other_.nodes);
    MoveToEnd(first_.meshes, other_.meshes);
    MoveToEnd(first_.meshOf, other_.meshOf);
    MoveToEnd(first_.cameras, other_.cameras);
    MoveToEnd(first_.cameraOf, other_.cameraOf);
    MoveToEnd(first_.lights, other_.lights);
    MoveToEnd(first_.lightOf, other_.lightOf);
    MoveToEnd(first_.skins, other_.skins);
}

int Appending::RenumberTarget(const std::string& list, int index) const
{
    const std::map<std::string, Renumber> lists = {
        {"materials", ByTable(materials_)}, {"textures", ByTable(textures_)}, {"samplers", ByTable(samplers_)},
        {"images", ByTable(images_)},       {"nodes", ByOffset(keys_.nodes)}, {"meshes", ByOffset(meshes_)},
        {"cameras", ByOffset(cameras_)},    {"lights", ByOffset(lights_)},    {"skins", ByOffset(skins_)}};
    const auto found = lists.find(list);
    return found == lists.end() ? index : found->second(index);
}

void Appending::AppendClips()
{
    const Renumber accessor = ByOffset(SizeOf(first_.accessors));
    for (CarriedClip& clip : other_.clips)
    {
        for (CarriedChannel& channel : clip.channels)
        {
            channel.node = ByOffset(keys_.nodes)(channel.node);
            channel.pointer = RenumberPointer(
                channel.pointer, [this](const std::string& list, int index) { return RenumberTarget(list, index); });
        }
        for (CarriedSampler& sampler : clip.samplers)
        {
            sampler.input = accessor(sampler.input);
            sampler.output = accessor(sampler.output);
        }
    }
    MoveToEnd(first_.clips, other_.clips);
    MoveToEnd(first_.accessors, other_.accessors);
}

/// Adds the members of an object that the first one does not have.
void Appending::AppendMissing(Json& first, Json other, const std::string& owner)
{
    if (!other.is_object())
        return;
    if (!first.is_object())
        first = Json::object();
    for (auto& [key, member] : other.items())
    {
        if (!first.contains(key))
            first[key] = member;
        else if (first[key] != member && key != "name")
            notes_.AddLoss(key + " of " + owner, "appending keeps the first file's " + key + " of " + owner);
    }
}

void Appending::AppendExtensions()
{
    const Renumber blob = ByOffset(SizeOf(first_.blobs));
    std::vector<Json*> pending = {&other_.extensions};
    while (!pending.empty())
    {
        Json& current = *pending.back();
        pending.pop_back();
        if (current.is_object())
            RenumberMember(current, "bufferView", blob);
        for (auto& [key, member] : current.items())
        {
            if (member.is_structured())
                pending.push_back(&member);
        }
    }
    MoveToEnd(first_.blobs, other_.blobs);
    for (auto& [name, extension] : other_.extensions.items())
    {
        if (!first_.extensions.contains(name))
            first_.extensions[name] = extension;
        else if (first_.extensions[name] != extension)
            notes_.AddLoss("extension " + name, "appending keeps the first file's extension " + name);
    }
}

void Appending::AppendDocument()
{
    AppendExtensions();
    AppendMissing(first_.asset, std::move(other_.asset), "the asset");
    AppendMissing(first_.scene, std::move(other_.scene), "the scene");
    if (first_.extras.is_null())
        first_.extras = std::move(other_.extras);
    else if (!other_.extras.is_null() && first_.extras != other_.extras)
        notes_.AddLoss("extras of the document", "appending keeps the first file's extras of the document");
    for (std::string& name : other_.required)
    {
        if (std::find(first_.required.begin(), first_.required.end(), name) == first_.required.end())
            first_.required.push_back(std::move(name));
    }
}

}  // namespace

AppendedKeys AppendCarried(Carried& first, Carried other, const AppendedBases& bases, Notes& notes)
{
    return Appending(first, std::move(other), bases, notes).Run();
}

}  // namespace Sceneprep

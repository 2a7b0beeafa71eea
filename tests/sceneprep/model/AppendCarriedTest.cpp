#include <sceneprep/model/AppendCarried.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;

/// A model with one of everything: a material with a texture, a sampler and an image.
Carried OneOfEach(const std::string& image, const std::string& material)
{
    Carried carried;
    carried.samplers = {{{"wrapS", 33071}}};
    carried.images = {{.file = image}};
    carried.textures = {Json::parse(R"({"source":0,"sampler":0,"extensions":{"EXT_texture_webp":{"source":0}}})")};
    carried.materials = {{{"name", material}, {"pbrMetallicRoughness", {{"baseColorTexture", {{"index", 0}}}}}}};
    CarriedMaterial use;
    use.material = 0;
    carried.materialOf = {use};
    return carried;
}

int TextureOf(const Carried& carried, std::size_t material)
{
    return carried.materials.at(material)["pbrMetallicRoughness"]["baseColorTexture"]["index"].get<int>();
}

const AppendedBases kSameFolder = {.embedded = 0, .file = "in/a.gltf", .otherFile = "in/b.gltf"};

TEST(AppendCarried, JoinsWhatIsEqualInEverything)
{
    Carried first = OneOfEach("wood.png", "Wood");
    Notes notes;
    const AppendedKeys keys = AppendCarried(first, OneOfEach("wood.png", "Wood"), kSameFolder, notes);
    EXPECT_EQ(first.images.size(), 1U);
    EXPECT_EQ(first.samplers.size(), 1U);
    EXPECT_EQ(first.textures.size(), 1U);
    EXPECT_EQ(first.materials.size(), 1U);
    ASSERT_EQ(keys.materials.size(), 1U);
    EXPECT_EQ(keys.materials[0].material, 0);
    EXPECT_TRUE(notes.Empty());
}

TEST(AppendCarried, KeepsMaterialsWithDifferentImagesApart)
{
    Carried first = OneOfEach("wood.png", "Wood");
    Notes notes;
    const AppendedKeys keys = AppendCarried(first, OneOfEach("stone.png", "Wood"), kSameFolder, notes);
    ASSERT_EQ(first.materials.size(), 2U);
    EXPECT_EQ(keys.materials.at(0).material, 1);
    EXPECT_EQ(TextureOf(first, 1), 1);
    EXPECT_EQ(first.textures.at(1),
              Json::parse(R"({"source":1,"sampler":0,"extensions":{"EXT_texture_webp":{"source":1}}})"));
}

TEST(AppendCarried, NamesImagesFromTheFolderOfTheFirstFile)
{
    Carried first = OneOfEach("wood.png", "Wood");
    Notes notes;
    AppendCarried(first, OneOfEach("wood.png", "Wood"), {.embedded = 0, .file = "in/a.gltf", .otherFile = "far/b.gltf"},
                  notes);
    EXPECT_EQ(first.images.at(1).file, "../far/wood.png");
}

TEST(AppendCarried, KeepsEmbeddedImagesApart)
{
    Carried first;
    first.images = {{.embedded = 0, .file = {}}};
    Carried other;
    other.images = {{.embedded = 0, .file = {}}};
    Notes notes;
    AppendCarried(first, other, {.embedded = 3, .file = "a.glb", .otherFile = "b.glb"}, notes);
    ASSERT_EQ(first.images.size(), 2U);
    EXPECT_EQ(first.images[1].embedded, 3);
}

TEST(AppendCarried, KeepsMaterialsThatAClipChangesApart)
{
    Carried first = OneOfEach("wood.png", "Wood");
    Carried other = OneOfEach("wood.png", "Wood");
    other.clips = {{.channels = {{.path = "pointer", .pointer = "/materials/0/alphaCutoff"}}}};
    Notes notes;
    AppendCarried(first, other, kSameFolder, notes);
    ASSERT_EQ(first.materials.size(), 2U);
    EXPECT_EQ(first.clips.at(0).channels.at(0).pointer, "/materials/1/alphaCutoff");
    AppendCarried(first, OneOfEach("wood.png", "Wood"), kSameFolder, notes);
    EXPECT_EQ(first.materials.size(), 2U);
}

TEST(AppendCarried, RenumbersNodesMeshesAndObjects)
{
    Carried first;
    first.nodes.resize(2);
    first.meshes.resize(1);
    first.meshOf = {{.mesh = 0}};
    first.skins.resize(1);
    first.cameras.resize(4);
    first.lights.resize(5);
    Carried other;
    other.nodes.resize(2);
    other.nodes[1].skin = 0;
    other.meshes.resize(1);
    other.meshOf = {{.mesh = 0}, {.mesh = -1}};
    other.skins = {{.joints = {1, 0}, .skeleton = -1}};
    other.cameras.resize(1);
    other.cameraOf = {{.object = 0}};
    other.lights.resize(1);
    other.lightOf = {{.object = 0}};
    Notes notes;
    const AppendedKeys keys = AppendCarried(first, other, kSameFolder, notes);
    EXPECT_EQ(keys.nodes, 2);
    EXPECT_EQ(keys.meshes, 1);
    EXPECT_EQ(first.nodes.at(3).skin, 1);
    EXPECT_EQ(first.nodes.at(2).skin, -1);
    EXPECT_EQ(first.meshOf.at(1).mesh, 1);
    EXPECT_EQ(first.meshOf.at(2).mesh, -1);
    EXPECT_THAT(first.skins.at(1).joints, ElementsAre(3, 2));
    EXPECT_EQ(first.skins.at(1).skeleton, -1);
    EXPECT_EQ(first.cameraOf.at(0).object, 4);
    EXPECT_EQ(first.lightOf.at(0).object, 5);
}

TEST(AppendCarried, RenumbersClips)
{
    Carried first;
    first.nodes.resize(3);
    first.accessors.resize(2);
    Carried other;
    other.nodes.resize(1);
    other.accessors.resize(2);
    other.clips = {{.channels = {{.node = 0, .path = "rotation"},
                                 {.path = "pointer", .pointer = "/nodes/0/extensions/KHR_node_visibility/visible"}},
                    .samplers = {{.input = 0, .output = 1}}}};
    Notes notes;
    AppendCarried(first, other, kSameFolder, notes);
    ASSERT_EQ(first.clips.size(), 1U);
    EXPECT_EQ(first.clips[0].channels[0].node, 3);
    EXPECT_EQ(first.clips[0].channels[1].node, -1);
    EXPECT_EQ(first.clips[0].channels[1].pointer, "/nodes/3/extensions/KHR_node_visibility/visible");
    EXPECT_EQ(first.clips[0].samplers[0].input, 2);
    EXPECT_EQ(first.clips[0].samplers[0].output, 3);
}

Carried WithVariants(const std::string& names)
{
    Carried carried = OneOfEach("wood.png", "Wood");
    carried.extensions["KHR_materials_variants"]["variants"] = Json::parse(names);
    carried.materialOf[0].primitive =
        Json::parse(R"({"extensions":{"KHR_materials_variants":{"mappings":[{"material":0,"variants":[0,1]}]}}})");
    return carried;
}

TEST(AppendCarried, JoinsVariantsByName)
{
    Carried first = WithVariants(R"([{"name":"day"},{"name":"night"}])");
    Notes notes;
    const AppendedKeys keys =
        AppendCarried(first, WithVariants(R"([{"name":"night"},{"name":"fog"}])"), kSameFolder, notes);
    EXPECT_EQ(first.extensions["KHR_materials_variants"]["variants"],
              Json::parse(R"([{"name":"day"},{"name":"night"},{"name":"fog"}])"));
    EXPECT_EQ(keys.materials.at(0).primitive["extensions"]["KHR_materials_variants"]["mappings"][0]["variants"],
              Json::parse("[1,2]"));
    EXPECT_TRUE(notes.Empty());
}

TEST(AppendCarried, KeepsTheFirstDocumentAndReportsTheRest)
{
    Carried first;
    first.asset = {{"copyright", "A"}};
    first.extensions["EXT_a"] = {{"x", 1}};
    first.required = {"EXT_a"};
    Carried other;
    other.asset = {{"copyright", "B"}, {"extras", 7}};
    other.extensions["EXT_a"] = {{"x", 2}};
    other.extensions["EXT_b"] = {{"bufferView", 0}};
    other.blobs = {{1, 2, 3}};
    other.extras = "text";
    other.required = {"EXT_a", "EXT_b"};
    first.blobs.resize(1);
    Notes notes;
    AppendCarried(first, other, kSameFolder, notes);
    EXPECT_EQ(first.asset, Json({{"copyright", "A"}, {"extras", 7}}));
    EXPECT_EQ(first.extensions["EXT_a"]["x"], 1);
    EXPECT_EQ(first.extensions["EXT_b"]["bufferView"], 1);
    EXPECT_EQ(first.extras, "text");
    EXPECT_THAT(first.required, ElementsAre("EXT_a", "EXT_b"));
    ASSERT_EQ(notes.All().size(), 2U);
    EXPECT_EQ(notes.All()[0].loss, "extension EXT_a");
    EXPECT_EQ(notes.All()[1].loss, "copyright of the asset");
}

}  // namespace

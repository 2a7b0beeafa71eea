#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/compare/MaterialKeys.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

const std::string kPng = std::string("\x89PNG\r\n\x1A\n", 8);

/// A triangle with a material.
Model WithMaterial(const TemporaryFolder& folder, const std::string& material, const std::string& image = "a.png")
{
    GltfDocument document;
    document.AddTriangle()["material"] = 0;
    document.json["materials"] = Json::array({Json::parse(material)});
    document.json["images"] = {{{"uri", image}}};
    document.json["textures"] = {{{"source", 0}}, {{"source", 0}, {"sampler", 0}}};
    document.json["samplers"] = {{{"wrapS", 33071}}};
    return GltfDocument::ReadFile(folder.Write("test.gltf", document.Text()));
}

std::string KeyOf(const Model& model)
{
    MaterialKeys keys(model);
    return keys.Find(model.scene->SurfaceLibrary.front(), 1).text;
}

constexpr const char* kTextured = R"({"name":"Wood","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})";

TEST(MaterialKeysTest, NamesDoNotMatterAndFactorsDo)
{
    const TemporaryFolder folder;
    const std::string key = KeyOf(WithMaterial(folder, R"({"name":"A","doubleSided":true})"));
    EXPECT_EQ(KeyOf(WithMaterial(folder, R"({"name":"B","doubleSided":true,"alphaMode":"OPAQUE"})")), key);
    EXPECT_NE(KeyOf(WithMaterial(folder, R"({"name":"A"})")), key);
}

TEST(MaterialKeysTest, TexturesAreComparedByTheContentOfTheirImages)
{
    const TemporaryFolder folder;
    folder.Write("a.png", kPng + "one");
    folder.Write("b.png", kPng + "one");
    folder.Write("c.png", kPng + "two");
    const std::string key = KeyOf(WithMaterial(folder, kTextured, "a.png"));
    EXPECT_EQ(KeyOf(WithMaterial(folder, kTextured, "b.png")), key);
    EXPECT_NE(KeyOf(WithMaterial(folder, kTextured, "c.png")), key);
    EXPECT_EQ(KeyOf(WithMaterial(folder, kTextured, "data:image/png;base64,iVBORw0KGgpvbmU=")), key);
    EXPECT_NE(KeyOf(WithMaterial(folder, R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":1}}})", "a.png")), key)
        << "another sampler";
}

TEST(MaterialKeysTest, MissingImagesAreComparedByTheirFileName)
{
    const TemporaryFolder folder;
    const std::string key = KeyOf(WithMaterial(folder, kTextured, "none/a.png"));
    EXPECT_EQ(KeyOf(WithMaterial(folder, kTextured, "../elsewhere/a.png")), key);
    EXPECT_NE(KeyOf(WithMaterial(folder, kTextured, "none/b.png")), key);
}

TEST(MaterialKeysTest, NumbersAreFoundWithoutReadingImages)
{
    const TemporaryFolder folder;
    folder.Write("a.png", kPng + "one");
    const Model model = WithMaterial(folder, kTextured);
    MaterialKeys keys(model);
    const int number = keys.FindNumber(model.scene->SurfaceLibrary.front(), 1);
    EXPECT_TRUE(keys.ImageFiles().empty());
    EXPECT_EQ(keys.Find(model.scene->SurfaceLibrary.front(), 1).number, number);
    EXPECT_EQ(keys.ImageFiles().size(), 1U);
}

TEST(MaterialKeysTest, FindsImagesInFurtherFolders)
{
    const TemporaryFolder folder;
    const TemporaryFolder further;
    const auto image = further.Write("a.png", kPng + "one");
    const Model model = WithMaterial(folder, kTextured);
    MaterialKeys keys(model, {further.Path()});
    EXPECT_NE(keys.Find(model.scene->SurfaceLibrary.front(), 1).text, KeyOf(model));
    EXPECT_EQ(keys.ImageFiles(), std::vector<std::filesystem::path>{image});
}

}  // namespace

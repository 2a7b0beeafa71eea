#include <sceneprep/import/AppendModel.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/Skeletons.h>
#include <sceneprep/model/TextureReferences.h>
#include <support/SceneText.h>

#include <utility>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::SceneContainer;
using Support::Scene;
using Support::ToText;

/// Returns a model of the scene.
Model ModelFrom(const char* file, const std::string& text)
{
    Model model;
    *model.scene = Scene(text);
    model.file = file;
    return model;
}

/// Adds a map with a texture to the first surface.
void AddTexture(Model& model, const std::string& spelling)
{
    const int index = model.scene->AddTextureToLibrary(spelling, true);
    Importing::Map map;
    map.SetTextureID(index);
    model.scene->SurfaceLibrary[0].MapList.push_back(map);
    model.textures.spelling.emplace(model.scene->TextureLibrary[static_cast<std::size_t>(index)], spelling);
}

std::string TextureOf(const Model& model, std::size_t surface, std::size_t map)
{
    return model.scene->TextureLibrary.at(
        static_cast<std::size_t>(model.scene->SurfaceLibrary.at(surface).MapList.at(map).GetTextureID()));
}

const EmbeddedTexture* ImageOf(const Model& model, std::size_t surface, std::size_t map)
{
    return FindEmbedded(model.textures, SpellingOf(model.textures, TextureOf(model, surface, map)));
}

TEST(AppendModel, SkinsKeepTheirJointsAndMovements)
{
    Model first = ModelFrom("a.obj", "House*[a]");
    Model other = ModelFrom("b.obj", "Figure( Hip@1,0,0* Body[b] )");
    Importing::Joint& joint = other.scene->GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    joint.SetLocalTM(Support::Translation(1, 0, 0));
    joint.SetAnimationID(0);
    other.scene->GeometryLibrary[0].VertexArray[0].AddWeight(0, 1);
    AppendModel(first, std::move(other));
    Importing::Geometry& body = Support::MeshOf(*first.scene, "b");
    ASSERT_EQ(body.JointArray.size(), 1U);
    EXPECT_EQ(body.JointArray[0].GetAnimationID(), Support::NodeNamed(*first.scene, "Hip").GetAnimationID());
    EXPECT_EQ(body.VertexArray[0].GetWeightsCount(), 1U);
    const std::vector<bool> isJoint = FindJointNodes(*first.scene, WalkFromRoot(*first.scene));
    EXPECT_TRUE(isJoint.at(static_cast<std::size_t>(Support::NodeIndex(*first.scene, "Hip"))));
}

TEST(AppendModel, JoinsTheHierarchies)
{
    Model first = ModelFrom("house.obj", "House[a]");
    Model other = ModelFrom("tree.obj", "Tree@5,0,0[b]");
    AppendModel(first, std::move(other));
    EXPECT_EQ(ToText(*first.scene), "Root( House[a] Tree[b] ) | _");
    EXPECT_EQ(Measure(*first.scene).max[0], 7);
}

TEST(AppendModel, PicturesInTheFileAreCountedOn)
{
    Model first = ModelFrom("a.glb", "A[a]");
    AddTexture(first, "*0");
    first.textures.embedded = {{.fileName = "first"}};
    Model other = ModelFrom("b.glb", "B[b]");
    AddTexture(other, "*1");
    AddTexture(other, "*0");
    other.textures.embedded = {{.fileName = "second"}, {.fileName = "third"}};
    AppendModel(first, std::move(other));
    EXPECT_EQ(TextureOf(first, 0, 0), "*0");
    EXPECT_EQ(TextureOf(first, 1, 0), "*2");
    EXPECT_EQ(TextureOf(first, 1, 1), "*1");
    ASSERT_EQ(first.textures.embedded.size(), 3U);
    EXPECT_EQ(first.textures.embedded[1].fileName, "second");
}

TEST(AppendModel, FilesOfOneFolderAreShared)
{
    Model first = ModelFrom("in/a.obj", "A[a]");
    AddTexture(first, "Wood.PNG");
    Model other = ModelFrom("in/b.obj", "B[b]");
    AddTexture(other, "wood.png");
    AppendModel(first, std::move(other));
    EXPECT_EQ(first.scene->TextureLibrary, (std::vector<std::string>{"wood.png"}));
    EXPECT_EQ(TextureOf(first, 1, 0), "wood.png");
}

TEST(AppendModel, FilesOfAnotherFolderAreNamedFromTheFirstOne)
{
    Model first = ModelFrom("models/house/a.obj", "A[a]");
    AddTexture(first, "Wood.png");
    Model other = ModelFrom("models/trees/b.obj", "B[b]");
    AddTexture(other, "Pictures/Wood.png");
    AddTexture(other, "/Absolute/Stone.png");
    AddTexture(other, "https://example.org/Sky.png");
    AppendModel(first, std::move(other));
    EXPECT_EQ(TextureOf(first, 1, 0), "../trees/pictures/wood.png");
    EXPECT_EQ(first.textures.spelling.at("../trees/pictures/wood.png"), "../trees/Pictures/Wood.png");
    EXPECT_EQ(TextureOf(first, 1, 1), "/absolute/stone.png");
    EXPECT_EQ(TextureOf(first, 1, 2), "https://example.org/sky.png");
}

TEST(AppendModel, PicturesOfOneNameStayApart)
{
    Model first = ModelFrom("a.fbx", "A[a]");
    AddTexture(first, "maps/Texture.png");
    first.textures.embedded = {{.fileName = "Texture.png", .content = {1}}};
    Model other = ModelFrom("b.fbx", "B[b]");
    AddTexture(other, "Texture.png");
    other.textures.embedded = {{.fileName = "other.png"}, {.fileName = "C:\\Texture.png", .content = {2}}};
    AppendModel(first, std::move(other));
    EXPECT_EQ(TextureOf(first, 0, 0), "*0");
    EXPECT_EQ(TextureOf(first, 1, 0), "*2");
    EXPECT_EQ(ImageOf(first, 0, 0)->content, std::vector<unsigned char>{1});
    EXPECT_EQ(ImageOf(first, 1, 0)->content, std::vector<unsigned char>{2});
    EXPECT_EQ(first.textures.embedded[0].fileName, "");
    EXPECT_EQ(first.textures.embedded[1].fileName, "other.png");
}

TEST(AppendModel, AFileIsNoPictureOfItsName)
{
    Model first = ModelFrom("a.fbx", "A[a]");
    AddTexture(first, "Texture.png");
    first.textures.embedded = {{.fileName = "Texture.png"}};
    Model second = ModelFrom("b.fbx", "B[b]");
    AddTexture(second, "Texture.png");
    Model third = ModelFrom("c.fbx", "C[c]");
    AddTexture(third, "Texture.png");
    third.textures.embedded = {{.fileName = "Texture.png", .content = {3}}};
    AppendModel(first, std::move(second));
    AppendModel(first, std::move(third));
    EXPECT_EQ(ImageOf(first, 0, 0), first.textures.embedded.data());
    EXPECT_EQ(TextureOf(first, 1, 0), "texture.png");
    EXPECT_EQ(ImageOf(first, 1, 0), nullptr);
    EXPECT_EQ(ImageOf(first, 2, 0), &first.textures.embedded[1]);
}

TEST(AppendModel, AStarWithoutAPictureIsAFileName)
{
    Model first = ModelFrom("a.glb", "A[a]");
    AddTexture(first, "*1");
    first.textures.embedded = {{.fileName = "first"}};
    Model other = ModelFrom("b.glb", "B[b]");
    AddTexture(other, "*");
    AddTexture(other, "*1A");
    AddTexture(other, "*0");
    AppendModel(first, std::move(other));
    AppendModel(first, ModelFrom("c.glb", "C[c]"));
    EXPECT_EQ(TextureOf(first, 0, 0), "./*1");
    EXPECT_EQ(TextureOf(first, 1, 0), "./*");
    EXPECT_EQ(TextureOf(first, 1, 1), "./*1a");
    EXPECT_EQ(first.textures.spelling.at("./*1a"), "./*1A");
    EXPECT_EQ(ImageOf(first, 1, 2), nullptr);
}

}  // namespace

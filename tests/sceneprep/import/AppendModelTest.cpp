#include <sceneprep/import/AppendModel.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/Skeletons.h>
#include <sceneprep/model/TextureReferences.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::SceneContainer;
using Support::Scene;
using Support::ToText;

/// A scene of one surface with one texture, as it was spelled.
struct Model
{
    explicit Model(const std::string& text) : scene(Scene(text)) {}

    void AddTexture(const std::string& spelling)
    {
        const int index = scene.AddTextureToLibrary(spelling, true);
        Importing::Map map;
        map.SetTextureID(index);
        scene.SurfaceLibrary[0].MapList.push_back(map);
        textures.spelling.emplace(scene.TextureLibrary[static_cast<std::size_t>(index)], spelling);
    }

    LoadedModel At(const char* file) { return {scene, textures, file}; }

    std::string TextureOf(std::size_t surface, std::size_t map)
    {
        return scene.TextureLibrary.at(
            static_cast<std::size_t>(scene.SurfaceLibrary.at(surface).MapList.at(map).GetTextureID()));
    }

    const EmbeddedTexture* PictureOf(std::size_t surface, std::size_t map)
    {
        return FindEmbedded(textures, SpellingOf(textures, TextureOf(surface, map)));
    }

    SceneContainer scene;
    Textures textures;
};

TEST(AppendModel, SkinsKeepTheirJointsAndMovements)
{
    Model first("House*[a]");
    Model other("Figure( Hip@1,0,0* Body[b] )");
    Importing::Joint& joint = other.scene.GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    joint.SetLocalTM(Support::Translation(1, 0, 0));
    joint.SetAnimationID(0);
    other.scene.GeometryLibrary[0].VertexArray[0].AddWeight(0, 1);
    AppendModel(first.At("a.obj"), other.At("b.obj"));
    Importing::Geometry& body = Support::MeshOf(first.scene, "b");
    ASSERT_EQ(body.JointArray.size(), 1U);
    EXPECT_EQ(body.JointArray[0].GetAnimationID(), Support::NodeNamed(first.scene, "Hip").GetAnimationID());
    EXPECT_EQ(body.VertexArray[0].GetWeightsCount(), 1U);
    const std::vector<bool> isJoint = FindJointNodes(first.scene, WalkFromRoot(first.scene));
    EXPECT_TRUE(isJoint.at(static_cast<std::size_t>(Support::NodeIndex(first.scene, "Hip"))));
}

TEST(AppendModel, JoinsTheHierarchies)
{
    Model first("House[a]");
    Model other("Tree@5,0,0[b]");
    AppendModel(first.At("house.obj"), other.At("tree.obj"));
    EXPECT_EQ(ToText(first.scene), "Root( House[a] Tree[b] ) | _");
    EXPECT_EQ(Measure(first.scene).max[0], 7);
}

TEST(AppendModel, PicturesInTheFileAreCountedOn)
{
    Model first("A[a]");
    first.AddTexture("*0");
    first.textures.embedded = {{.fileName = "first"}};
    Model other("B[b]");
    other.AddTexture("*1");
    other.AddTexture("*0");
    other.textures.embedded = {{.fileName = "second"}, {.fileName = "third"}};
    AppendModel(first.At("a.glb"), other.At("b.glb"));
    EXPECT_EQ(first.TextureOf(0, 0), "*0");
    EXPECT_EQ(first.TextureOf(1, 0), "*2");
    EXPECT_EQ(first.TextureOf(1, 1), "*1");
    ASSERT_EQ(first.textures.embedded.size(), 3U);
    EXPECT_EQ(first.textures.embedded[1].fileName, "second");
}

TEST(AppendModel, FilesOfOneFolderAreShared)
{
    Model first("A[a]");
    first.AddTexture("Wood.PNG");
    Model other("B[b]");
    other.AddTexture("wood.png");
    AppendModel(first.At("in/a.obj"), other.At("in/b.obj"));
    EXPECT_EQ(first.scene.TextureLibrary, (std::vector<std::string>{"wood.png"}));
    EXPECT_EQ(first.TextureOf(1, 0), "wood.png");
}

TEST(AppendModel, FilesOfAnotherFolderAreNamedFromTheFirstOne)
{
    Model first("A[a]");
    first.AddTexture("Wood.png");
    Model other("B[b]");
    other.AddTexture("Pictures/Wood.png");
    other.AddTexture("/Absolute/Stone.png");
    other.AddTexture("https://example.org/Sky.png");
    AppendModel(first.At("models/house/a.obj"), other.At("models/trees/b.obj"));
    EXPECT_EQ(first.TextureOf(1, 0), "../trees/pictures/wood.png");
    EXPECT_EQ(first.textures.spelling.at("../trees/pictures/wood.png"), "../trees/Pictures/Wood.png");
    EXPECT_EQ(first.TextureOf(1, 1), "/absolute/stone.png");
    EXPECT_EQ(first.TextureOf(1, 2), "https://example.org/sky.png");
}

TEST(AppendModel, PicturesOfOneNameStayApart)
{
    Model first("A[a]");
    first.AddTexture("maps/Texture.png");
    first.textures.embedded = {{.fileName = "Texture.png", .content = {1}}};
    Model other("B[b]");
    other.AddTexture("Texture.png");
    other.textures.embedded = {{.fileName = "other.png"}, {.fileName = "C:\\Texture.png", .content = {2}}};
    AppendModel(first.At("a.fbx"), other.At("b.fbx"));
    EXPECT_EQ(first.TextureOf(0, 0), "*0");
    EXPECT_EQ(first.TextureOf(1, 0), "*2");
    EXPECT_EQ(first.PictureOf(0, 0)->content, std::vector<unsigned char>{1});
    EXPECT_EQ(first.PictureOf(1, 0)->content, std::vector<unsigned char>{2});
    EXPECT_EQ(first.textures.embedded[0].fileName, "");
    EXPECT_EQ(first.textures.embedded[1].fileName, "other.png");
}

TEST(AppendModel, AFileIsNoPictureOfItsName)
{
    Model first("A[a]");
    first.AddTexture("Texture.png");
    first.textures.embedded = {{.fileName = "Texture.png"}};
    Model second("B[b]");
    second.AddTexture("Texture.png");
    Model third("C[c]");
    third.AddTexture("Texture.png");
    third.textures.embedded = {{.fileName = "Texture.png", .content = {3}}};
    AppendModel(first.At("a.fbx"), second.At("b.fbx"));
    AppendModel(first.At("a.fbx"), third.At("c.fbx"));
    EXPECT_EQ(first.PictureOf(0, 0), first.textures.embedded.data());
    EXPECT_EQ(first.TextureOf(1, 0), "texture.png");
    EXPECT_EQ(first.PictureOf(1, 0), nullptr);
    EXPECT_EQ(first.PictureOf(2, 0), &first.textures.embedded[1]);
}

TEST(AppendModel, AStarWithoutAPictureIsAFileName)
{
    Model first("A[a]");
    first.AddTexture("*1");
    first.textures.embedded = {{.fileName = "first"}};
    Model other("B[b]");
    other.AddTexture("*");
    other.AddTexture("*1A");
    other.AddTexture("*0");
    AppendModel(first.At("a.glb"), other.At("b.glb"));
    AppendModel(first.At("a.glb"), Model("C[c]").At("c.glb"));
    EXPECT_EQ(first.TextureOf(0, 0), "./*1");
    EXPECT_EQ(first.TextureOf(1, 0), "./*");
    EXPECT_EQ(first.TextureOf(1, 1), "./*1a");
    EXPECT_EQ(first.textures.spelling.at("./*1a"), "./*1A");
    EXPECT_EQ(first.PictureOf(1, 2), nullptr);
}

}  // namespace

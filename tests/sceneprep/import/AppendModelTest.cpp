#include <sceneprep/import/AppendModel.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/Skeletons.h>
#include <sceneprep/model/TextureReferences.h>
#include <support/SceneText.h>

#include <string>
#include <utility>
#include <vector>

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

TEST(AppendModel, KeepsJointsAndTheirAnimations)
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

TEST(AppendModel, RenumbersEmbeddedImages)
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

TEST(AppendModel, SharesTextureFilesOfOneFolder)
{
    Model first = ModelFrom("in/a.obj", "A[a]");
    AddTexture(first, "Wood.PNG");
    Model other = ModelFrom("in/b.obj", "B[b]");
    AddTexture(other, "wood.png");
    AppendModel(first, std::move(other));
    EXPECT_EQ(first.scene->TextureLibrary, (std::vector<std::string>{"wood.png"}));
    EXPECT_EQ(TextureOf(first, 1, 0), "wood.png");
}

TEST(AppendModel, NamesTextureFilesFromTheFolderOfTheFirstModel)
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

TEST(AppendModel, KeepsImagesOfOneNameApart)
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

TEST(AppendModel, KeepsAFileAndAnEmbeddedImageOfOneNameApart)
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

TEST(AppendModel, TreatsAStarWithoutAnImageAsAFileName)
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

CarriedMaterial Carrying(int material)
{
    CarriedMaterial carried;
    carried.material = material;
    return carried;
}

/// Returns a model with two materials that are equal in the container, "m:c" and its copy, used by a surface each.
Model TwoAlike(const char* file)
{
    Model model = ModelFrom(file, "A( B[a=m:c] C[b=n:d] )");
    model.scene->MaterialLibrary[1] = model.scene->MaterialLibrary[0];
    model.carried.materials = {{{"name", "m"}}, {{"name", "m"}, {"doubleSided", true}}};
    model.carried.materialOf = {Carrying(0), Carrying(1)};
    return model;
}

TEST(AppendModel, KeepsMaterialsApartThatDifferInWhatIsCarried)
{
    Model first = TwoAlike("a.gltf");
    const std::string name = first.scene->MaterialLibrary[0].GetName();
    Model other = TwoAlike("b.gltf");
    other.carried.materials[0]["alphaMode"] = "MASK";
    AppendModel(first, std::move(other));
    ASSERT_EQ(first.scene->MaterialLibrary.size(), 3U);
    std::vector<int> carried;
    for (const CarriedMaterial& material : first.carried.materialOf)
        carried.push_back(material.material);
    EXPECT_EQ(carried, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(first.carried.materials.at(2)["alphaMode"], "MASK");
    EXPECT_EQ(first.scene->SurfaceLibrary.at(2).GetMaterialID(), 2);
    EXPECT_EQ(first.scene->SurfaceLibrary.at(3).GetMaterialID(), 1);
    for (Importing::Material& material : first.scene->MaterialLibrary)
        EXPECT_EQ(material.GetName(), name);
}

TEST(AppendModel, JoinsMaterialsWithoutCarriedDataByContent)
{
    Model first = ModelFrom("a.obj", "A[a=m:c]");
    AppendModel(first, ModelFrom("b.obj", "B[b=m:c]"));
    EXPECT_EQ(first.scene->MaterialLibrary.size(), 1U);
    EXPECT_TRUE(first.carried.materialOf.empty());
}

TEST(AppendModel, AppendsCarriedMaterialsToAModelWithoutAny)
{
    Model first = ModelFrom("a.obj", "A[a=m:c]");
    AppendModel(first, TwoAlike("b.gltf"));
    ASSERT_EQ(first.carried.materialOf.size(), 3U);
    EXPECT_EQ(first.carried.materialOf[0].material, CarriedMaterial::kNotCarried);
    EXPECT_EQ(first.carried.materialOf[1].material, 0);
    EXPECT_EQ(first.carried.materialOf[2].material, 1);
}

TEST(AppendModel, RenumbersTheSupplement)
{
    Model first = ModelFrom("a.gltf", "A[a]");
    first.carried.nodes.resize(4);
    first.carried.meshOf.resize(3);
    first.supplement.meshKeys = {2};
    Model other = ModelFrom("b.gltf", "B( C[b] )");
    other.carried.nodes.resize(2);
    other.carried.meshOf.resize(1);
    other.supplement = {.layouts = {{.texCoordSets = 1}},
                        .pinnedMeshes = {true},
                        .keptNodes = {false, true},
                        .nodeKeys = {1, -1},
                        .meshKeys = {0}};
    AppendModel(first, std::move(other));
    EXPECT_EQ(first.supplement.meshKeys, (std::vector<int>{2, 3}));
    EXPECT_EQ(first.supplement.pinnedMeshes, (std::vector<bool>{false, true}));
    EXPECT_EQ(first.supplement.layouts.at(0).texCoordSets, -1);
    EXPECT_EQ(first.supplement.layouts.at(1).texCoordSets, 1);
    EXPECT_EQ(first.supplement.keptNodes, (std::vector<bool>{false, false, true}));
    EXPECT_EQ(first.supplement.nodeKeys, (std::vector<int>{-1, 5, -1}));
}

TEST(AppendModel, ReplacesMadeRootsByTheirChildren)
{
    Model first = ModelFrom("a.gltf", "Root( A[a] B[b] )");
    first.carried.hasMadeRoot = true;
    Model other = ModelFrom("b.gltf", "Root( C[c] D[d] )");
    other.carried.hasMadeRoot = true;
    AppendModel(first, std::move(other));
    EXPECT_FALSE(first.carried.hasMadeRoot);
    const Importing::Node& root =
        first.scene->NodeLibrary.at(static_cast<std::size_t>(first.scene->GetRootNodeIndex()));
    std::vector<std::string> children;
    for (const int child : root.ChildList)
        children.push_back(first.scene->NodeLibrary.at(static_cast<std::size_t>(child)).GetName());
    EXPECT_EQ(children, (std::vector<std::string>{"A", "B", "C", "D"}));
}

}  // namespace

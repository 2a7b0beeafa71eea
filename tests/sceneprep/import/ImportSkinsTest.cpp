#include <sceneprep/import/ImportSkins.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <importing/math/SameBits.h>
#include <sceneprep/RandomSkins.h>
#include <support/Meshes.h>
#include <support/SceneText.h>

#include <limits>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::Geometry;
using Importing::Joint;
using Importing::SceneContainer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

aiBone* MakeBone(const char* name, const std::vector<aiVertexWeight>& weights = {})
{
    auto* bone = new aiBone;
    bone->mName = name;
    bone->mNumWeights = static_cast<unsigned>(weights.size());
    bone->mWeights = new aiVertexWeight[weights.size()];
    std::copy(weights.begin(), weights.end(), bone->mWeights);
    return bone;
}

std::unique_ptr<aiMesh> MeshWith(const std::vector<aiBone*>& bones)
{
    auto mesh = std::make_unique<aiMesh>();
    mesh->mBones = new aiBone*[bones.size()];
    for (aiBone* bone : bones)
        mesh->mBones[mesh->mNumBones++] = bone;
    return mesh;
}

/// A surface of the scene with its mesh of the file.
SkinnedSurface Skinned(SceneContainer& scene, const aiMesh& mesh, const std::string& surface, const std::string& node)
{
    for (std::size_t s = 0; s < scene.SurfaceLibrary.size(); ++s)
    {
        if (scene.SurfaceLibrary[s].GetName() == surface)
            return {&mesh, static_cast<int>(s), Support::NodeIndex(scene, node)};
    }
    throw std::invalid_argument(surface);
}

std::vector<std::string> NamesOf(std::vector<Joint>& joints)
{
    std::vector<std::string> names;
    names.reserve(joints.size());
    for (Joint& joint : joints)
        names.push_back(joint.GetName());
    return names;
}

std::vector<int> ParentsOf(const std::vector<Joint>& joints)
{
    std::vector<int> parents;
    parents.reserve(joints.size());
    for (const Joint& joint : joints)
        parents.push_back(joint.GetParentID());
    return parents;
}

TEST(ImportSkins, WeightsAreAddedBoneByBone)
{
    const auto mesh = MeshWith({MakeBone("A", {{0, 0.25F}, {2, 3}}), MakeBone("B"), MakeBone("C", {{0, 0.5F}})});
    Geometry geometry = Support::Triangle();
    EXPECT_EQ(ImportWeights(*mesh, geometry), 0U);
    ASSERT_EQ(geometry.VertexArray[0].GetWeightsCount(), 2U);
    EXPECT_THAT(geometry.VertexArray[0].GetWeight(0), Pair(0U, 0.25F));
    EXPECT_THAT(geometry.VertexArray[0].GetWeight(1), Pair(2U, 0.5F));
    EXPECT_EQ(geometry.VertexArray[1].GetWeightsCount(), 0U);
    EXPECT_THAT(geometry.VertexArray[2].GetWeight(0), Pair(0U, 3.0F)) << "not made to add up to 1";
}

TEST(ImportSkins, DropsWeightsThatAreZeroOrInvalid)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const auto mesh = MeshWith({MakeBone("A", {{0, 0}, {0, nan}, {1, -infinity}, {3, 1}, {4000000000U, 1}, {2, 1}})});
    Geometry geometry = Support::Triangle();
    EXPECT_EQ(ImportWeights(*mesh, geometry), 4U);
    EXPECT_EQ(geometry.VertexArray[0].GetWeightsCount(), 0U);
    EXPECT_EQ(geometry.VertexArray[1].GetWeightsCount(), 0U);
    EXPECT_EQ(geometry.VertexArray[2].GetWeightsCount(), 1U);
}

TEST(ImportSkins, JointsHaveTheTransformsAndParentsOfTheirNodes)
{
    SceneContainer scene = Support::Scene("Root@9,0,0( Arm@1,0,0( Elbow@0,2,0( Between@0,0,3( Hand@4,0,0 ) ) ) M[m] )");
    auto mesh = MeshWith({MakeBone("Hand"), MakeBone("Elbow"), MakeBone("Arm")});
    mesh->mBones[1]->mOffsetMatrix.a4 = 7;
    EXPECT_THAT(ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(), IsEmpty());
    std::vector<Joint>& joints = scene.GeometryLibrary.at(0).JointArray;
    EXPECT_THAT(NamesOf(joints), ElementsAre("Hand", "Elbow", "Arm"));
    EXPECT_THAT(ParentsOf(joints), ElementsAre(1, 2, -1));
    EXPECT_TRUE(Importing::SameBits(joints[0].GetLocalTM(), Support::Translation(4, 0, 3)));
    EXPECT_TRUE(Importing::SameBits(joints[2].GetLocalTM(), Support::Translation(1, 0, 0)));
    EXPECT_TRUE(Importing::SameBits(joints[1].GetBindPoseInverse(), Support::Translation(7, 0, 0)));
    EXPECT_EQ(joints[0].GetAnimationID(), -1);
}

TEST(ImportSkins, RootJointsAreRelativeToTheNodeOfTheMesh)
{
    SceneContainer scene = Support::Scene("Root( Arm@1,0,0 P@0,5,0( M@0,0,2[m] ) )");
    const auto mesh = MeshWith({MakeBone("Arm")});
    ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene);
    const D3DXMATRIX local = scene.GeometryLibrary.at(0).JointArray.at(0).GetLocalTM();
    EXPECT_EQ(D3DXVECTOR3(local._41, local._42, local._43), D3DXVECTOR3(1, -5, -2));
}

TEST(ImportSkins, JointsHaveTheAnimationsOfTheirNodes)
{
    SceneContainer scene = Support::Scene("Root( Arm( Hand@1,0,0* ) M[m] )");
    const auto mesh = MeshWith({MakeBone("Arm"), MakeBone("Hand")});
    EXPECT_THAT(ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(), IsEmpty());
    const std::vector<Joint>& joints = scene.GeometryLibrary.at(0).JointArray;
    ASSERT_EQ(joints.size(), 2U);
    EXPECT_EQ(joints[0].GetAnimationID(), -1);
    EXPECT_EQ(joints[1].GetAnimationID(), Support::NodeNamed(scene, "Hand").GetAnimationID());
}

TEST(ImportSkins, ABoneWithoutANodeKeepsItsBindPose)
{
    SceneContainer scene = Support::Scene("Root( M@5,0,0[m] )");
    const auto mesh = MeshWith({MakeBone("Missing")});
    mesh->mBones[0]->mOffsetMatrix.a4 = 3;
    EXPECT_THAT(ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(),
                ElementsAre(Note{"bones without a node keep the transform of their bind pose (1)"}));
    EXPECT_EQ(scene.GeometryLibrary.at(0).JointArray.at(0).GetLocalTM()._41, -3);
}

TEST(ImportSkins, TheNearestOfSeveralNodesWithTheNameIsTheBone)
{
    SceneContainer scene = Support::Scene("Root( Ann@1,0,0( Hip@1,0,0 M[m] ) Bob@2,0,0( Hip@3,0,0 N[n] ) )");
    const auto ann = MeshWith({MakeBone("Hip")});
    const auto bob = MeshWith({MakeBone("Hip")});
    EXPECT_THAT(ImportSkins({Skinned(scene, *ann, "m", "M"), Skinned(scene, *bob, "n", "N")}, scene).All(),
                ElementsAre(Note{"bones whose name several nodes have use the most likely of them (2)"}));
    EXPECT_EQ(scene.GeometryLibrary.at(0).JointArray.at(0).GetLocalTM()._41, 1);
    EXPECT_EQ(scene.GeometryLibrary.at(1).JointArray.at(0).GetLocalTM()._41, 3);
}

TEST(ImportSkins, ANodeWithAMeshIsNotPreferredAsABone)
{
    SceneContainer scene = Support::Scene("Root( Body( Head@0,9,0[m] ) Neck@1,0,0( Head@2,0,0 ) )");
    const auto mesh = MeshWith({MakeBone("Neck"), MakeBone("Head")});
    ImportSkins({Skinned(scene, *mesh, "m", "Head")}, scene);
    const std::vector<Joint>& joints = scene.GeometryLibrary.at(0).JointArray;
    EXPECT_THAT(ParentsOf(joints), ElementsAre(-1, 0));

    SceneContainer other = Support::Scene("Root( Far( Head@2,0,0 ) Body( Head@0,9,0[m] ) )");
    const auto lone = MeshWith({MakeBone("Head")});
    ImportSkins({{lone.get(), 0, 4}}, other);
    EXPECT_EQ(other.GeometryLibrary.at(0).JointArray.at(0).GetLocalTM()._41, 2);
}

TEST(ImportSkins, NodesWithOtherJointTransformsGetACopyOfTheGeometry)
{
    SceneContainer scene = Support::Scene("Root( Hip@7,0,0 A[a=m] B@1,0,0[b=m] C[c=m] )");
    const auto mesh = MeshWith({MakeBone("Hip")});
    ImportSkins({Skinned(scene, *mesh, "a", "A"), Skinned(scene, *mesh, "b", "B"), Skinned(scene, *mesh, "c", "C")},
                scene);
    EXPECT_EQ(scene.GeometryLibrary.size(), 2U);
    EXPECT_EQ(Support::MeshOf(scene, "b").JointArray.at(0).GetLocalTM()._41, 6);
    EXPECT_EQ(&Support::MeshOf(scene, "a"), &Support::MeshOf(scene, "c"));
}

TEST(ImportSkins, ASkinAtAnAnimatedNodeIsMovedToANodeWithoutAnimation)
{
    SceneContainer scene = Support::Scene("Root( Up@1,0,0( Hip P@2,0,0*( M@3,0,0[m] ) ) )");
    const auto mesh = MeshWith({MakeBone("Hip")});
    EXPECT_THAT(
        ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(),
        ElementsAre(Note{
            "skinned meshes at animated nodes are moved to nodes without animation, as only joints move a skin (1)"}));
    EXPECT_EQ(Support::ToText(scene), "Root( Up( Hip P*( M ) M (skin)[m] ) )");
    EXPECT_EQ(Support::NodeNamed(scene, "M (skin)").GetLocalTransform().GetMatrix()._41, 5);
    EXPECT_EQ(scene.GeometryLibrary.at(0).JointArray.at(0).GetLocalTM()._41, -5);
}

TEST(ImportSkins, ReportsASkinBelowItsOwnAnimatedBone)
{
    SceneContainer scene = Support::Scene("Root*( M[m] )");
    const auto mesh = MeshWith({MakeBone("Root")});
    EXPECT_THAT(ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(),
                ElementsAre(Note{"skinned meshes below their own animated bones are moved twice (1)", "skins"}));
    EXPECT_EQ(Support::ToText(scene), "Root*( M[m] )");
}

TEST(ImportSkins, ReportsANodeWithASingularMatrix)
{
    SceneContainer scene = Support::Scene("Root( Hip M[m] )");
    Support::NodeNamed(scene, "M").SetLocalTransform(Importing::Transform(Support::Scaling(1, 0, 1)));
    const auto mesh = MeshWith({MakeBone("Hip")});
    EXPECT_THAT(
        ImportSkins({Skinned(scene, *mesh, "m", "M")}, scene).All(),
        ElementsAre(Note{"skinned meshes at nodes with a singular matrix have wrong joint transforms (1)", "skins"}));
}

TEST(ImportSkins, DeepSkeletonsDoNotOverflow)
{
    SceneContainer scene;
    constexpr int kDepth = 20000;
    scene.NodeLibrary.resize(kDepth + 1);
    std::vector<aiBone*> bones;
    for (int n = 0; n < kDepth; ++n)
    {
        scene.NodeLibrary[static_cast<std::size_t>(n)].ChildList = {n + 1};
        const std::string name = "N" + std::to_string(n);
        scene.NodeLibrary[static_cast<std::size_t>(n)].SetName(name);
        if (n > 0 && n % 2 == 0)
            bones.push_back(MakeBone(name.c_str()));
    }
    scene.SetRootNodeIndex(0);
    scene.GeometryLibrary.push_back(Support::Triangle());
    scene.SurfaceLibrary.emplace_back().SetGeometryID(0);
    scene.NodeLibrary[kDepth].SurfaceList = {0};
    const auto mesh = MeshWith(bones);
    EXPECT_THAT(ImportSkins({{mesh.get(), 0, kDepth}}, scene).All(), IsEmpty());
    EXPECT_EQ(scene.GeometryLibrary[0].JointArray.size(), bones.size());
}

class RandomSkinsTest : public testing::TestWithParam<std::uint32_t>
{};

TEST_P(RandomSkinsTest, VerticesFollowTheirBonesAsInTheFile)
{
    RandomSkins random(GetParam());
    std::vector<Shapes> expected;
    for (const int pose : {kRest, 0, 1})
        expected.push_back(random.ShapesOfFile(pose));
    ImportSkins(random.Skinned(), random.Scene());
    for (const int pose : {kRest, 0, 1})
    {
        SCOPED_TRACE(pose);
        ExpectSameShapes(SkinnedShapes(random.Scene(), pose), expected.at(static_cast<std::size_t>(pose + 1)));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSkinsTest, testing::Range(0U, 200U));

}  // namespace

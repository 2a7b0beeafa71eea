#include <sceneprep/export/ExportScene.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <set>

namespace
{

using namespace Sceneprep;
using Importing::SceneContainer;
using Support::Scene;

std::unique_ptr<aiScene> Build(SceneContainer& scene, const char* file = "a.dae")
{
    return BuildExportScene(scene, {}, *FindWriteFormat(file));
}

/// Names and mesh counts, as "Root(A1 B1(C0))".
std::string Shape(const aiNode& node)
{
    std::string text = node.mName.C_Str() + std::to_string(node.mNumMeshes);
    for (unsigned c = 0; c < node.mNumChildren; ++c)
    {
        text += c == 0 ? '(' : ' ';
        text += Shape(*node.mChildren[c]);
    }
    if (node.mNumChildren > 0)
        text += ')';
    return text;
}

TEST(ExportScene, KeepsTheHierarchyWithOneMeshPerNode)
{
    SceneContainer scene = Scene("Root( A[a]( B ) C[b c] ) | Lost[d]");
    const auto target = Build(scene);
    EXPECT_EQ(Shape(*target->mRootNode), "Root0(A1(B0) C0(b1 c1))");
    EXPECT_EQ(target->mNumMeshes, 3U);
}

TEST(ExportScene, MatricesAreTransposedForColumnVectors)
{
    SceneContainer scene = Scene("Root( A@1,2,3 )");
    const auto target = Build(scene);
    const aiMatrix4x4& matrix = target->mRootNode->mChildren[0]->mTransformation;
    EXPECT_EQ(matrix.a4, 1);
    EXPECT_EQ(matrix.b4, 2);
    EXPECT_EQ(matrix.c4, 3);
    EXPECT_EQ(matrix.d1, 0);
}

TEST(ExportScene, SurfacesOfOneMeshAndMaterialShareAMesh)
{
    SceneContainer scene = Scene("Root( A[a=m:c] B[b=m:c] C[d=m:e] )");
    EXPECT_EQ(Build(scene)->mNumMeshes, 2U);
}

TEST(ExportScene, EmptiedSurfacesAreSkipped)
{
    SceneContainer scene = Scene("Root[a=m:c b=n:c]");
    scene.MergeSurfaces(0, 2, -1);
    const auto target = Build(scene);
    EXPECT_EQ(target->mNumMeshes, 1U);
    EXPECT_EQ(Shape(*target->mRootNode), "Root1");
    EXPECT_EQ(target->mMeshes[0]->mNumFaces, 24U);
}

TEST(ExportScene, FlatFormatsGetEverythingInWorldSpace)
{
    SceneContainer scene = Scene("Root@10,0,0( A@1,0,0( B[a] ) C[b] )");
    Support::NodeNamed(scene, "C").SetLocalTransform(Support::Scaling(-1, 1, 1));
    const std::vector<std::uint32_t> indices = Support::MeshOf(scene, "b").IndexArray;
    const auto target = Build(scene, "a.obj");
    EXPECT_EQ(Shape(*target->mRootNode), "Root0(a1 b1)");
    EXPECT_TRUE(target->mRootNode->mTransformation.IsIdentity());
    ASSERT_EQ(target->mNumMeshes, 2U);
    const D3DXVECTOR3 first = Support::MeshOf(scene, "a").VertexArray[0].GetPosition();
    EXPECT_EQ(target->mMeshes[0]->mVertices[0].x, first.x + 11);
    EXPECT_EQ(target->mMeshes[1]->mVertices[0].x, 10 - first.x);
    EXPECT_EQ(target->mMeshes[0]->mFaces[0].mIndices[1], indices[1]);
    EXPECT_EQ(target->mMeshes[1]->mFaces[0].mIndices[1], indices[2]);  // mirrored, so the winding is flipped
}

TEST(ExportScene, TheWorldIsRotatedInFormatsWithZUp)
{
    SceneContainer scene = Scene("Root@1,2,3[a]");
    const D3DXVECTOR3 first = Support::MeshOf(scene, "a").VertexArray[0].GetPosition();
    const auto target = Build(scene, "a.3ds");
    EXPECT_EQ(target->mMeshes[0]->mVertices[0], aiVector3D(first.x + 1, -(first.z + 3), first.y + 2));
}

TEST(ExportScene, ARootIsAddedIfTheFormatLosesTheRoot)
{
    SceneContainer scene = Scene("Root@1,2,3[a]( A[b] )");
    const auto target = Build(scene, "a.fbx");
    EXPECT_EQ(Shape(*target->mRootNode), "0(Root1(A1))");
    EXPECT_TRUE(target->mRootNode->mTransformation.IsIdentity());
    EXPECT_EQ(target->mRootNode->mChildren[0]->mTransformation.c4, 3);
}

TEST(ExportScene, AShearedSceneIsWrittenFlatIfTheFormatHasNoShear)
{
    SceneContainer scene = Scene("Root( A( B[b] ) )");
    D3DXMATRIX shear = Support::Translation(0, 0, 0);
    shear._21 = 1;
    Support::NodeNamed(scene, "A").SetLocalTransform(shear);
    EXPECT_EQ(Shape(*Build(scene, "a.fbx")->mRootNode), "Root0(b1)");
    EXPECT_EQ(Shape(*Build(scene, "a.dae")->mRootNode), "Root0(A0(B1))");
}

TEST(ExportScene, LargeMeshesAreSplit)
{
    SceneContainer scene = Scene("Root[a]");
    std::vector<std::uint32_t>& indices = Support::MeshOf(scene, "a").IndexArray;
    const std::vector<std::uint32_t> box = indices;
    while (indices.size() < std::size_t{3} * 65536)
        indices.insert(indices.end(), box.begin(), box.end());
    const auto target = Build(scene, "a.3ds");
    EXPECT_EQ(Shape(*target->mRootNode), "Root0(a1 a1)");
    EXPECT_EQ(target->mMeshes[0]->mNumFaces, 65535U);
    EXPECT_EQ(target->mMeshes[1]->mNumFaces, indices.size() / 3 - 65535);
    EXPECT_EQ(Build(scene, "a.obj")->mNumMeshes, 1U);
}

TEST(ExportScene, OneCameraIsAtItsNodeAndFurtherOnesAreAtChildren)
{
    SceneContainer scene = Scene("Root( A{eye} B{left right} )");
    const auto target = Build(scene);
    ASSERT_EQ(target->mNumCameras, 3U);
    EXPECT_EQ(Shape(*target->mRootNode).substr(0, 8), "Root0(A0");
    EXPECT_STREQ(target->mCameras[0]->mName.C_Str(), "A");
    std::set<std::string> names;
    for (unsigned i = 0; i < 3; ++i)
    {
        const aiNode* node = target->mRootNode->FindNode(target->mCameras[i]->mName);
        EXPECT_NE(node, nullptr);
        names.insert(target->mCameras[i]->mName.C_Str());
    }
    EXPECT_EQ(names.size(), 3U);
}

TEST(ExportScene, FormatsWithoutLightsGetNone)
{
    SceneContainer scene = Scene("Root( A<sun> )");
    EXPECT_EQ(Build(scene, "a.dae")->mNumLights, 1U);
    EXPECT_EQ(Build(scene, "a.obj")->mNumLights, 0U);
}

TEST(ExportScene, AnimatedNodesGetUniqueNames)
{
    SceneContainer scene = Scene("Root( A* B* C )");
    for (std::size_t i = 1; i < 4; ++i)
        scene.NodeLibrary[i].SetName("Same");
    const auto target = Build(scene);
    ASSERT_EQ(target->mNumAnimations, 1U);
    ASSERT_EQ(target->mAnimations[0]->mNumChannels, 2U);
    EXPECT_STREQ(target->mAnimations[0]->mChannels[0]->mNodeName.C_Str(), "Same_2");
    EXPECT_STREQ(target->mAnimations[0]->mChannels[1]->mNodeName.C_Str(), "Same_3");
    EXPECT_EQ(Shape(*target->mRootNode), "Root0(Same_20 Same_30 Same0)");
}

TEST(ExportScene, NamesThatBecomeEqualAreNumbered)
{
    SceneContainer scene = Scene("Root( A* B* )");
    scene.NodeLibrary[1].SetName("a\"b");
    scene.NodeLibrary[2].SetName("a_b");
    const auto target = Build(scene, "a.fbx");
    EXPECT_STREQ(target->mAnimations[0]->mChannels[0]->mNodeName.C_Str(), "a_b_2");
    EXPECT_STREQ(target->mAnimations[0]->mChannels[1]->mNodeName.C_Str(), "a_b_3");
    EXPECT_EQ(Shape(*target->mRootNode), "0(Root0(a_b_20 a_b_30))");
}

TEST(ExportScene, NamesOfMeshesAreOnOneLine)
{
    SceneContainer scene = Scene("Root[a]");
    Support::MeshOf(scene, "a").SetName("a\nb");
    EXPECT_STREQ(Build(scene)->mMeshes[0]->mName.C_Str(), "a b");
}

TEST(ExportScene, JointsAreBonesNamedAfterTheirNodes)
{
    SceneContainer scene = Scene("Root( Hip@1,0,0 A[a=m] B@0,5,0[b=m] )");
    Importing::Geometry& mesh = scene.GeometryLibrary[0];
    mesh.JointArray.emplace_back(std::string("Hip")).SetLocalTM(Support::Translation(1, 0, 0));
    mesh.JointArray.emplace_back(std::string("Leg")).SetParentID(0);
    mesh.VertexArray[3].AddWeight(0, 0.5F);
    const auto target = Build(scene);
    EXPECT_EQ(Shape(*target->mRootNode), "Root0(Hip0(Leg0) A1 B1(Hip_20(Leg_20)))");
    ASSERT_EQ(target->mNumMeshes, 2U) << "each node sees joints of its own";
    ASSERT_EQ(target->mMeshes[0]->mNumBones, 2U);
    EXPECT_STREQ(target->mMeshes[0]->mBones[0]->mName.C_Str(), "Hip");
    EXPECT_EQ(target->mMeshes[0]->mBones[0]->mWeights[0].mVertexId, 3U);
    EXPECT_EQ(target->mMeshes[0]->mBones[0]->mWeights[0].mWeight, 0.5F);
    EXPECT_STREQ(target->mMeshes[1]->mBones[1]->mName.C_Str(), "Leg_2");
    EXPECT_EQ(Build(scene, "a.x")->mMeshes[0]->mNumBones, 0U);
    EXPECT_EQ(Shape(*Build(scene, "a.x")->mRootNode), "Root0(Hip0 A1 B1)");
}

TEST(ExportScene, AnEmptySceneHasOnlyARoot)
{
    SceneContainer scene;
    const auto target = Build(scene);
    EXPECT_EQ(target->mRootNode->mNumChildren, 0U);
    EXPECT_EQ(target->mNumMeshes, 0U);
    EXPECT_NE(target->mFlags & AI_SCENE_FLAGS_INCOMPLETE, 0U);
}

}  // namespace

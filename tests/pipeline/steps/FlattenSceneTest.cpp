#include <pipeline/steps/FlattenScene.h>

#include <gtest/gtest.h>
#include <importing/math/Products.h>
#include <importing/math/SameBits.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/HasNormals.h>
#include <support/Meshes.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;
using SceneprepTests::ExpectSameWorld;
using Support::ToText;

TEST(FlattenScene, OnlyTheRootOfAStaticHierarchyRemains)
{
    TestScene scene("Root@5,0,0( P@1,0,0( Q( R@0,1,0( S[a=m:c] ) ) ) T[b=n:c] )");
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root[a]");
    EXPECT_EQ(scene.container.NodeLibrary.size(), 1U);
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, AnimatedNodesKeepTheirWorldTransforms)
{
    TestScene scene("Root@5,0,0( P@1,0,0( Q@0,3,0( X@0,0,1*( Y[a] ) Z[b] ) ) )");
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root[b]( Q( X*[a] ) )");
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, IgnoredAnimationCollapsesEverything)
{
    TestScene scene("Root( P@1,0,0( X@0,0,1*( Y[a] ) ) )");
    const auto before = Measure(scene.container);
    FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_EQ(ToText(scene.container), "Root[a]");
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, FacesOfMirroredNodesKeepTheirFrontSide)
{
    TestScene scene("Root( P( A[a] ) B[b] )");
    Support::NodeNamed(scene.container, "P").SetLocalTransform(Support::Scaling(1, -1, 1));
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(scene.container.NodeLibrary.size(), 1U);
    ExpectSameWorld(Measure(scene.container), before);  // flipped faces would change the signed volume
    EXPECT_GT(before.volume, 1.9);
}

TEST(FlattenScene, AnEmptySceneStaysEmpty)
{
    TestScene scene(Importing::SceneContainer{});
    FlattenScene(scene);
    EXPECT_TRUE(scene.container.NodeLibrary.empty());
    EXPECT_EQ(scene.container.GetRootNodeIndex(), -1);
}

TEST(FlattenScene, SkinnedMeshesAreNotBakedOrMerged)
{
    for (const char* text : {"Root( P@1,0,0( A@0,2,0[a] B[b c d] ) )", "Root*[a b]( C[c] D[d] )"})
    {
        TestScene scene(text);
        for (const char* surface : {"a", "b"})
            Support::MeshOf(scene.container, surface).JointArray.resize(2);
        const auto before = Measure(scene.container);
        FlattenScene(scene);
        EXPECT_EQ(Support::MeshOf(scene.container, "a").VertexArray.size(), 8U);
        EXPECT_EQ(Support::MeshOf(scene.container, "b").VertexArray.size(), 8U);
        EXPECT_EQ(Support::MeshOf(scene.container, "b").JointArray.size(), 2U);
        ExpectSameWorld(Measure(scene.container), before);
    }
    TestScene scene("Root( P@1,0,0*( A@0,2,0[a] ) B[b] )");
    for (const char* surface : {"a", "b"})
        Support::MeshOf(scene.container, surface).JointArray.resize(2);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( P*( A[a] ) B[b] )") << "what moves stays where it is";
    FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_EQ(ToText(scene.container), "Root( A[a] B[b] )");
}

TEST(FlattenScene, AnimatedSiblingsShareANewParentUnlessItIsTheRoot)
{
    TestScene scene("Root( A*[a] P@1,0,0( B*[b] C D*[d] ) )");
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( A*[a] P( B*[b] D*[d] ) )");
}

TEST(FlattenScene, RigidNodesCollapseIntoTheAnimatedNodeAboveThem)
{
    TestScene scene(
        "Root[r=m:c]( X@1,0,0*[x=n:c]( A@0,1,0[a=o:c]( B@0,0,1[b=p:e] ) C@0,0,2( Y*[y=q:c]( D[d=s:c] ) ) ) )");
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root[r]( X*[x b]( C( Y*[y] ) ) )");
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, CamerasAndLightsMoveToTheAnimatedNodeAboveThem)
{
    TestScene scene("Root( X*( A@0,1,0{eye}( B@0,0,1<sun> ) ) )");
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( X*{eye}<sun> )");
    EXPECT_TRUE(Importing::SameBits(scene.container.CameraLibrary[0].GetOffsetMatrix().GetMatrix(),
                                    Support::Translation(0, 1, 0)));
    EXPECT_TRUE(Importing::SameBits(scene.container.LightLibrary[0].GetOffsetMatrix().GetMatrix(),
                                    Support::Translation(0, 1, 1)));
}

TEST(FlattenScene, MirroredNodesBelowAnimatedOnesKeepTheSideOfTheirFaces)
{
    TestScene scene("Root( X*( A[a] ) )");
    Support::NodeNamed(scene.container, "A").SetLocalTransform(Support::Scaling(1, -1, 1));
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( X*[a] )");
    ExpectSameWorld(Measure(scene.container), before);
    EXPECT_GT(before.volume, 0.9);
}

TEST(FlattenScene, PinnedMeshesBelowAnimatedNodesStayOnANode)
{
    TestScene scene("Root( X*( A@0,1,0[a=m:c b=n:c] ) )");
    const auto before = Measure(scene.container);
    scene.supplement.pinnedMeshes = {true};
    scene.supplement.nodeKeys = {5, 6, 7};
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( X*[b]( A[a] ) )");
    EXPECT_EQ(scene.supplement.nodeKeys, (std::vector<int>{5, 6, 7}));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, DeepChainsOfAnimatedAndRigidNodesCollapse)
{
    Importing::SceneContainer chain = Support::Scene("Root*");
    for (int node = 1; node < 20000; ++node)
    {
        chain.NodeLibrary.back().ChildList = {node};
        chain.NodeLibrary.emplace_back();
        if (node % 10 == 0)
            chain.NodeLibrary.back().SetAnimationID(0);
    }
    TestScene scene(std::move(chain));
    FlattenScene(scene);
    EXPECT_EQ(scene.container.NodeLibrary.size(), 2000U);
}

TEST(FlattenScene, FacesBelowAnimatedNodesAreNotFlipped)
{
    TestScene scene("Root( P*( A[a] ) )");
    Support::NodeNamed(scene.container, "P").SetLocalTransform(Support::Scaling(1, -1, 1));
    const auto indices = scene.container.GeometryLibrary[0].IndexArray;
    FlattenScene(scene);
    EXPECT_EQ(scene.container.GeometryLibrary[0].IndexArray, indices);
    FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_NE(scene.container.GeometryLibrary[0].IndexArray, indices);
}

TEST(FlattenScene, KeptNodesStayEvenIfAnimationIsIgnored)
{
    TestScene scene("Root( P@1,0,0( K@0,2,0[a=m:e]( L@0,1,0[b=n:e] ) ) Q@0,0,3( X*[c] ) )");
    const auto before = Measure(scene.container);
    scene.supplement.keptNodes = {false, false, true};
    scene.supplement.nodeKeys = {10, 11, 12, 13, 14, 15};
    FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_EQ(ToText(scene.container), "Root[c]( P( K[a] ) )");
    ExpectSameWorld(Measure(scene.container), before);
    std::map<std::string, int> keys;
    for (std::size_t node = 0; node < scene.container.NodeLibrary.size(); ++node)
    {
        const std::string name = scene.container.NodeLibrary[node].GetName();
        keys[name] = scene.supplement.nodeKeys.at(node);
        EXPECT_EQ(IsKept(scene.supplement, node), name == "K");
    }
    EXPECT_EQ(keys, (std::map<std::string, int>{{"Root", 10}, {"P", 11}, {"K", 12}}));
}

TEST(FlattenScene, PinnedMeshesStayOnANodeWithTheirWorldMatrix)
{
    TestScene scene("Root[r=m:c]( P@1,0,0( M@0,2,0[p=n:c q=o:c] ) )");
    Support::NodeNamed(scene.container, "M").SetLocalTransform(Support::Scaling(-1, 1, 2));
    const auto before = Measure(scene.container);
    scene.supplement.pinnedMeshes = {true, true, false};
    scene.supplement.meshKeys = {5, 6, 7};
    const Changes changes = FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_EQ(changes, (Changes{{"skinned or pinned surfaces kept apart", 2}}));
    EXPECT_EQ(ToText(scene.container), "Root[q r]( M[p] )");
    const D3DXMATRIX matrix = Support::NodeNamed(scene.container, "M").GetLocalTransform().GetMatrix();
    EXPECT_TRUE(
        Importing::SameBits(matrix, Support::Product(Support::Scaling(-1, 1, 2), Support::Translation(1, 0, 0))));
    ExpectSameWorld(Measure(scene.container), before);
    EXPECT_EQ(scene.supplement.meshKeys, (std::vector<int>{5, 6, 7}));
}

TEST(FlattenScene, MergedMeshesLoseTheirKeysWhichAreRecorded)
{
    TestScene scene("Root( A[a=m:c] B[b=n:c] C[d=o:e] )");
    scene.supplement.meshKeys = {5, 6, 7};
    FlattenScene(scene);
    EXPECT_EQ(scene.supplement.meshKeys, (std::vector<int>{-1, -1, 7}));
    EXPECT_EQ(scene.supplement.mergedMeshKeys, (std::vector<int>{5, 6}));
}

TEST(FlattenScene, NotesOfNodesAreRestored)
{
    TestScene scene("Root( P( A* ) B )");
    for (Importing::Node& node : scene.container.NodeLibrary)
        node.SetNote("note of " + node.GetName());
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root( A* )");
    for (Importing::Node& node : scene.container.NodeLibrary)
        EXPECT_EQ(node.GetNote(), "note of " + node.GetName());
}

TEST(FlattenScene, FrozenNodesStayAsTheyAre)
{
    TestScene scene("Root[r=m:c]( P@1,0,0( F@0,2,0[b=n:c a=o:c]( G@0,1,0{eye} H[h=p:c] ) ) Q@0,0,3( X*[x=q:c] ) )");
    const auto before = Measure(scene.container);
    scene.supplement.frozenNodes = {false, false, true, true, true};
    scene.supplement.pinnedMeshes = {false, true};
    FlattenScene(scene, {.ignoreAnimation = true});
    EXPECT_EQ(ToText(scene.container), "Root[r]( P( F[b a]( G{eye} H[h] ) ) )");
    EXPECT_EQ(scene.supplement.frozenNodes, (std::vector<bool>{false, true, true, true, false}));
    ExpectSameWorld(Measure(scene.container), before);
    scene.supplement.frozenNodes = std::vector<bool>(5, true);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root[r]( P( F[b a]( G{eye} H[h] ) ) )");
}

TEST(FlattenScene, OnlySurfacesOfOneCellAreMerged)
{
    const std::string text =
        "Root( A@1,0,0[a=m:c] B@8,0,0[b=n:c] C@2,0,0[d=o:c] X*( D[e=p:c] E@8,0,0[f=q:c] F@7,0,0[g=s:c] ) )";
    TestScene scene(text);
    const auto before = Measure(scene.container);
    FlattenScene(scene, {.cellSize = 5});
    EXPECT_EQ(ToText(scene.container), "Root[a b]( X*[e f] )");
    ExpectSameWorld(Measure(scene.container), before);
    TestScene large(text);
    FlattenScene(large, {.cellSize = 50});
    EXPECT_EQ(ToText(large.container), "Root[a]( X*[e] )");
}

/// Largest angle between the normals of a box and the nearest of the directions that faces of the box may have, in
/// radians.
double LargestAngleToFaces(Importing::Geometry& mesh)
{
    double largest = 0;
    for (std::size_t first = 0; first + 2 < mesh.IndexArray.size(); first += 3)
    {
        const auto vertex = [&](std::size_t i) -> Importing::Vertex& {
            return mesh.VertexArray[mesh.IndexArray[first + i]];
        };
        const D3DXVECTOR3 face = Importing::Cross(vertex(1).GetPosition() - vertex(0).GetPosition(),
                                                  vertex(2).GetPosition() - vertex(0).GetPosition());
        for (std::size_t i = 0; i < 3; ++i)
        {
            const D3DXVECTOR3 normal = vertex(i).GetNormal();
            const D3DXVECTOR3 cross = Importing::Cross(face, normal);
            largest = std::max(largest, std::atan2(std::sqrt(double{Importing::Dot(cross, cross)}),
                                                   double{Importing::Dot(face, normal)}));
        }
    }
    return largest;
}

TEST(FlattenScene, NormalsStayPerpendicularToTheirFaces)
{
    for (const D3DXMATRIX& scale : {Support::Scaling(1, 5, 2), Support::Scaling(-1, 5, 2)})
    {
        TestScene scene("Root( P( A[a] ) )");
        scene.container.GeometryLibrary[0] = Support::Box24();
        const float c = std::cos(0.7F);
        const float s = std::sin(0.7F);
        const D3DXMATRIX turn(c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
        Support::NodeNamed(scene.container, "P").SetLocalTransform(scale);
        Support::NodeNamed(scene.container, "A").SetLocalTransform(turn);  // so that the world matrix is skewed
        FlattenScene(scene);
        EXPECT_EQ(ToText(scene.container), "Root[a]");
        EXPECT_LT(LargestAngleToFaces(scene.container.GeometryLibrary[0]), 1e-3);
    }
}

TEST(FlattenScene, FlatNormalsOfMirroredMeshesFaceTheViewer)
{
    TestScene scene("Root( A[a=m:c] B[b=n:c] )");
    for (Importing::Geometry& mesh : scene.container.GeometryLibrary)
        mesh = Support::Box24();
    for (Importing::Vertex& vertex : scene.container.GeometryLibrary[1].VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    Support::NodeNamed(scene.container, "B").SetLocalTransform(Support::Scaling(1, -1, 2));
    const Changes changes = FlattenScene(scene);
    EXPECT_EQ(changes.back(), (Change{"meshes without normals got flat ones for merging", 1}));
    EXPECT_LT(LargestAngleToFaces(scene.container.GeometryLibrary[0]), 1e-3);
}

TEST(FlattenScene, MeshesWithoutNormalsStayWithout)
{
    TestScene scene("Root( A@1,0,0[a=m:c] B[b=n:c] )");
    for (Importing::Geometry& mesh : scene.container.GeometryLibrary)
        for (Importing::Vertex& vertex : mesh.VertexArray)
            vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    Support::NodeNamed(scene.container, "B").SetLocalTransform(Support::Scaling(1, -1, 2));
    const auto before = Measure(scene.container);
    FlattenScene(scene);
    EXPECT_EQ(ToText(scene.container), "Root[a]");
    EXPECT_FALSE(HasNormals(scene.container.GeometryLibrary[0]));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(FlattenScene, MergedMeshesHaveOneLayout)
{
    TestScene scene("Root( A[a=m:c] B[b=n:c] )");
    scene.supplement.layouts = {{.texCoordSets = 1, .attributes = {{"TANGENT", 1, 4}}}, {.texCoordSets = 1}};
    for (Importing::Vertex& vertex : scene.container.GeometryLibrary[0].VertexArray)
        vertex.SetTexCoord({1, 0}, 2);
    for (Importing::Vertex& vertex : scene.container.GeometryLibrary[1].VertexArray)
        vertex.SetTexCoord({1, 0}, 0);
    const Changes changes = FlattenScene(scene);
    EXPECT_EQ(changes.back(), (Change{"meshes lost their tangents for merging", 1, "tangents"}));
    EXPECT_EQ(scene.supplement.layouts[0], (VertexLayout{.texCoordSets = 1}));
    for (const Importing::Vertex& vertex : scene.container.GeometryLibrary[0].VertexArray)
        EXPECT_EQ(vertex.GetTexCoordCount(), 1U);
}

}  // namespace

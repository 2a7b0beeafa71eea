#include <pipeline/steps/RepairMirrors.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/Hierarchy.h>
#include <support/Meshes.h>

#include <cmath>
#include <vector>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using PipelineTests::TestScene;
using SceneprepTests::ExpectSameWorld;
using Support::NodeNamed;
using Support::Product;
using Support::Scaling;
using Support::Translation;

Changes Repaired(std::size_t repaired, std::size_t left)
{
    return {{"mirrored nodes repaired", repaired}, {"mirrored nodes left as they are", left}};
}

/// A quarter turn about z.
D3DXMATRIX Turn() { return {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

bool IsMirrored(SceneContainer& scene, const char* node)
{
    return IsMirroring(NodeNamed(scene, node).GetLocalTransform().GetMatrix());
}

TEST(RepairMirrors, NegativeScaleIsBakedIntoTheMeshes)
{
    TestScene scene("Root( A@3,0,0[a]( B@0,2,0[b] ) C[c] )");
    NodeNamed(scene.container, "A").SetLocalTransform(Product(Scaling(1, -2, 1), Translation(3, 0, 0)));
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    EXPECT_FALSE(IsMirrored(scene.container, "A"));
    EXPECT_FALSE(IsMirrored(scene.container, "B"));
    ExpectSameWorld(Measure(scene.container), before);
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 0));
}

TEST(RepairMirrors, AMirroredNodeBelowAMirroredOneKeepsItsTransform)
{
    TestScene scene("Root( A[a]( B[b]( C@1,0,0[c] ) ) )");
    NodeNamed(scene.container, "A").SetLocalTransform(Product(Scaling(-1, 1, 1), Translation(5, 0, 0)));
    NodeNamed(scene.container, "B")
        .SetLocalTransform(Product(Product(Scaling(1, -1, 1), Turn()), Translation(0, 7, 0)));
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(2, 0));
    EXPECT_FALSE(IsMirrored(scene.container, "A"));
    EXPECT_FALSE(IsMirrored(scene.container, "B"));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, CamerasAndLightsKeepTheirWorldTransforms)
{
    TestScene scene("Root( A@3,0,0( B@2,0,0{eye}<sun> ) )");
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-1, 1, 1));
    scene.container.CameraLibrary[0].SetOffsetMatrix(Importing::Transform(Translation(0.5F, 0, 0)));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    const D3DXMATRIX world = scene.container.CalculateGlobalTM(Support::NodeIndex(scene.container, "B"));
    EXPECT_FLOAT_EQ(Product(scene.container.CameraLibrary[0].GetOffsetMatrix().GetMatrix(), world)._41, -2.5F);
    EXPECT_FLOAT_EQ(Product(scene.container.LightLibrary[0].GetOffsetMatrix().GetMatrix(), world)._41, -2);
}

TEST(RepairMirrors, ObjectsOfOtherNodesDoNotChange)
{
    TestScene scene("Root( A B@2,0,0{eye} )");
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-1, 1, 1));
    RepairMirrors(scene);
    EXPECT_EQ(scene.container.CameraLibrary[0].GetOffsetMatrix().GetMatrix()._11, 1);
}

TEST(RepairMirrors, SkinnedMeshesAndJointsStayMirrored)
{
    TestScene scene("Root( A( Hip ) B[b] C[c] )");
    for (const char* node : {"A", "B", "C"})
        NodeNamed(scene.container, node).SetLocalTransform(Scaling(-1, 1, 1));
    scene.container.GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 2));
    EXPECT_TRUE(IsMirrored(scene.container, "A")) << "above a joint";
    EXPECT_TRUE(IsMirrored(scene.container, "B")) << "shows a skinned mesh";
    EXPECT_FALSE(IsMirrored(scene.container, "C"));
}

TEST(RepairMirrors, AnimatedBranchesStayMirrored)
{
    TestScene scene("Root( A( B*[b] ) C*[c] D[d] )");
    for (const char* node : {"A", "C", "D"})
        NodeNamed(scene.container, node).SetLocalTransform(Scaling(-1, 1, 1));
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 2));
    EXPECT_TRUE(IsMirrored(scene.container, "A"));
    EXPECT_TRUE(IsMirrored(scene.container, "C"));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, MatricesThatCannotBeDecomposedStayMirrored)
{
    D3DXMATRIX skew = Scaling(-1, 1, 1);
    skew._21 = 0.5F;
    TestScene scene("Root( A[a] )");
    NodeNamed(scene.container, "A").SetLocalTransform(skew);
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 1));
    EXPECT_TRUE(IsMirrored(scene.container, "A"));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, RepairKeepsFacesThatDisagreeWithTheirNormals)
{
    TestScene scene("Root( A[a] )");
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-1, 1, 1));
    scene.container.GeometryLibrary[0].FlipFaces();
    const WorldMeasure before = Measure(scene.container);
    EXPECT_LT(before.volume, 0);
    RepairMirrors(scene);
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, AnEmptySceneDoesNotChange)
{
    TestScene scene(Importing::SceneContainer{});
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 0));
}

TEST(RepairMirrors, ReportsProgressByNodes)
{
    TestScene scene("Root( A[a]( B[b] ) C[c] )");
    std::vector<double> parts;
    RepairMirrors(scene, {}, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.25, 0.5, 0.75, 1}));
}

TEST(RepairMirrors, KeptNodesAndPinnedMeshesStayMirrored)
{
    TestScene scene("Root( A( K ) B[b] C[c] )");
    for (const char* node : {"A", "B", "C"})
        NodeNamed(scene.container, node).SetLocalTransform(Scaling(-1, 1, 1));
    scene.supplement.keptNodes = {false, false, true};
    scene.supplement.pinnedMeshes = {true};
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 2));
    EXPECT_FALSE(IsMirrored(scene.container, "C"));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, MeshesWithoutNormalsKeepTheirFaces)
{
    TestScene scene("Root( A[a]( B[b] ) )");
    for (Importing::Geometry& mesh : scene.container.GeometryLibrary)
        for (Importing::Vertex& vertex : mesh.VertexArray)
            vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-1, 1, 1));
    const WorldMeasure before = Measure(scene.container);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    ExpectSameWorld(Measure(scene.container), before);
}

TEST(RepairMirrors, NormalsAndTangentsAreThoseOfTheBakedScale)
{
    TestScene scene("Root( A[a] )");
    scene.container.GeometryLibrary[0] = Support::Triangle(D3DXVECTOR3(0.6F, 0.8F, 0));
    for (Importing::Vertex& vertex : scene.container.GeometryLibrary[0].VertexArray)
    {
        vertex.SetTexCoord({1, 0}, 0);
        vertex.SetTexCoord({0, 1}, 1);
    }
    scene.supplement.layouts = {{.texCoordSets = 0, .attributes = {{"TANGENT", 0, 4}}}};
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-3, 1, 1));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    Importing::Vertex& vertex = scene.container.GeometryLibrary[0].VertexArray[0];
    const float length = std::sqrt(0.04F + 0.64F);
    EXPECT_NEAR(vertex.GetNormal().x, -0.2F / length, 1e-6);
    EXPECT_NEAR(vertex.GetNormal().y, 0.8F / length, 1e-6);
    EXPECT_EQ(vertex.GetTexCoord(0), D3DXVECTOR2(-1, 0));
    EXPECT_EQ(vertex.GetTexCoord(1).y, -1);
}

TEST(RepairMirrors, ANodeWithAMeshWithoutTrianglesStaysMirrored)
{
    TestScene scene("Root( A[a] B[b] )");
    scene.container.GeometryLibrary[0].IndexArray.clear();
    for (const char* node : {"A", "B"})
        NodeNamed(scene.container, node).SetLocalTransform(Scaling(-1, 1, 1));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 1));
    EXPECT_TRUE(IsMirrored(scene.container, "A"));
}

}  // namespace

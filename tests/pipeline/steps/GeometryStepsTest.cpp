#include <pipeline/steps/GeometrySteps.h>
#include <sceneprep/run/Progress.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>
#include <support/SceneText.h>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::Geometry;
using Importing::SceneContainer;

/// Two listings of one mesh: a step takes it once.
SceneContainer SceneOf(const Geometry& mesh)
{
    SceneContainer scene = Support::Scene("Root( A[a=m] B[b=m] )");
    scene.GeometryLibrary[0] = mesh;
    return scene;
}

std::vector<std::string> NamesOf(const StepOptions& options)
{
    StepSequence pipeline;
    AddGeometrySteps(pipeline, options);
    return pipeline.StepNames();
}

void RunSteps(SceneContainer& scene, const StepOptions& options)
{
    StepSequence pipeline;
    AddGeometrySteps(pipeline, options);
    std::ostringstream out;
    Progress progress(out, false);
    pipeline.Run(scene, progress);
}

TEST(GeometrySteps, StandInTheirOrder)
{
    const StepOptions all = {.fixCulling = true,
                             .weld = true,
                             .normals = true,
                             .unifyNormals = true,
                             .uvs = {{"cubic", 0, false}, {"planar-x", 1, true}}};
    EXPECT_EQ(NamesOf(all),
              (std::vector<std::string>{"Fix culling", "Forget normals", "Weld", "Compute normals", "Unify normals",
                                        "Generate cubic UVs, set 0", "Generate planar-x UVs, set 1"}));
    EXPECT_EQ(NamesOf({.weld = true}), (std::vector<std::string>{"Weld"}));
    EXPECT_EQ(NamesOf({.normals = true}), (std::vector<std::string>{"Compute normals"}));
    EXPECT_TRUE(NamesOf({}).empty());
}

TEST(GeometrySteps, FixCullingTurnsTrianglesThatTheirNormalsPointAgainst)
{
    SceneContainer scene = SceneOf(Support::Triangle(D3DXVECTOR3(0, 0, -1)));
    EXPECT_EQ(FixCulling(scene), (Changes{{"triangles turned", 1}}));
    EXPECT_EQ(scene.GeometryLibrary[0].IndexArray, (std::vector<std::uint32_t>{0, 2, 1}));
    EXPECT_EQ(FixCulling(scene), (Changes{{"triangles turned", 0}}));
}

TEST(GeometrySteps, WeldCountsTheVerticesThatGo)
{
    SceneContainer scene = SceneOf(Support::UnindexedGrid(2, 1));  // 12 corners of 6 places
    EXPECT_EQ(Weld(scene), (Changes{{"vertices removed", 6}}));
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray.size(), 6U);
}

TEST(GeometrySteps, ComputeNormalsCountsTheSplits)
{
    SceneContainer scene = SceneOf(Support::Wedge(90));
    EXPECT_EQ(ComputeNormals(scene), (Changes{{"vertices split", 2}}));
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

TEST(GeometrySteps, UnifyNormalsCountsTheTurnedOnes)
{
    SceneContainer scene = SceneOf(Support::Triangle(D3DXVECTOR3(0, 0, -1)));
    EXPECT_EQ(UnifyNormals(scene), (Changes{{"normals turned", 3}}));
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray[1].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

TEST(GeometrySteps, NormalsThatAreComputedAnewDoNotKeepVerticesApart)
{
    Geometry faceted = Support::UnindexedGrid(1, 1);
    for (std::size_t v = 0; v < 3; ++v)
        faceted.VertexArray[v].SetNormal(D3DXVECTOR3(0, 1, 0));
    SceneContainer scene = SceneOf(faceted);
    RunSteps(scene, {.weld = true, .normals = true});
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray.size(), 4U);
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

TEST(GeometrySteps, UVsOfEveryMesh)
{
    SceneContainer scene = SceneOf(Support::Quad());
    RunSteps(scene, {.uvs = {{"planar-z", 1, false}}});
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray[0].GetTexCoord(1).x, 0);
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray[0].GetTexCoordCount(), 2U);
}

TEST(GeometrySteps, EmptiedMeshesAreLeftOut)
{
    SceneContainer scene = SceneOf({});
    RunSteps(scene, {.fixCulling = true, .weld = true, .normals = true, .unifyNormals = true, .uvs = {{"cubic"}}});
    EXPECT_TRUE(scene.GeometryLibrary[0].VertexArray.empty());
}

TEST(GeometrySteps, TellTheirPartByTheVerticesThatAreDone)
{
    SceneContainer scene = Support::Scene("Root( A[a=m] B[b=n] )");
    scene.GeometryLibrary[0] = Support::UnindexedGrid(1, 1);
    scene.GeometryLibrary[1] = Support::UnindexedGrid(3, 1);
    std::vector<double> parts;
    Weld(scene, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.25, 1}));
}

}  // namespace

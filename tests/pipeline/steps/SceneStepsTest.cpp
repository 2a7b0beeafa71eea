#include <pipeline/steps/SceneSteps.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;

TEST(SceneSteps, SharedMeshesAreCopied)
{
    SceneContainer scene = Scene("Root( A[a=m] B[b=m] C[c=n] )");
    EXPECT_EQ(ResolveInstances(scene), (Changes{{"meshes copied", 1}}));
    EXPECT_EQ(scene.GetGeometryInstanceCount(0), 1);
    EXPECT_EQ(ResolveInstances(scene), (Changes{{"meshes copied", 0}}));
}

TEST(SceneSteps, OverlappingSurfacesGetOffsets)
{
    SceneContainer scene = Scene("Root( A[a] B[b] C[c] D@10,0,0[d] )");
    EXPECT_EQ(ComputeCollisionOffsets(scene), (Changes{{"surfaces with an offset", 2}, {"is the largest offset", 2}}));
    EXPECT_EQ(Support::SurfaceNamed(scene, "c").GetCollisionOffset(), 2);
    EXPECT_EQ(Support::SurfaceNamed(scene, "d").GetCollisionOffset(), 0);
}

}  // namespace

#include <pipeline/steps/ComputeCollisionOffsets.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

TEST(ComputeCollisionOffsets, OverlappingSurfacesGetOffsets)
{
    TestScene scene("Root( A[a] B[b] C[c] D@10,0,0[d] )");
    EXPECT_EQ(ComputeCollisionOffsets(scene), (Changes{{"surfaces with an offset", 2}, {"is the largest offset", 2}}));
    EXPECT_EQ(Support::SurfaceNamed(scene.container, "c").GetCollisionOffset(), 2);
    EXPECT_EQ(Support::SurfaceNamed(scene.container, "d").GetCollisionOffset(), 0);
}

}  // namespace

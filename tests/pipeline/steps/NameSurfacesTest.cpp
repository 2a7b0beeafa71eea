#include <pipeline/steps/NameSurfaces.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

TEST(NameSurfaces, SurfacesAreNamedAfterMeshAndMaterial)
{
    TestScene scene("Root[a=m:c b=n]");
    EXPECT_EQ(NameSurfaces(scene), (Changes{{"surfaces renamed", 2}}));
    EXPECT_EQ(scene.container.SurfaceLibrary[0].GetName(), "m\r\nc");
    EXPECT_EQ(scene.container.SurfaceLibrary[1].GetName(), "n\r\n");
    EXPECT_EQ(NameSurfaces(scene), (Changes{{"surfaces renamed", 0}}));
}

}  // namespace

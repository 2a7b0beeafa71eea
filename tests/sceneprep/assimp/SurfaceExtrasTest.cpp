#include <sceneprep/assimp/SurfaceExtras.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using Importing::Surface;

TEST(SurfaceExtras, SetOffsetAndNameFromTheNode)
{
    aiNode node;
    node.mMetaData = new aiMetadata();
    node.mMetaData->Add(kCollisionOffsetExtra, std::int32_t{3});
    node.mMetaData->Add(kSurfaceNameExtra, aiString("Box\r\nRed"));
    Surface surface;
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetName(), "Box\r\nRed");
    EXPECT_EQ(surface.GetCollisionOffset(), 3);
}

TEST(SurfaceExtras, ChangeNothingWhenMissing)
{
    Surface surface;
    surface.SetName("Box");
    surface.SetCollisionOffset(2);
    const aiNode node;
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetName(), "Box");
    EXPECT_EQ(surface.GetCollisionOffset(), 2);
}

TEST(SurfaceExtras, AcceptNumbersOfSeveralTypes)
{
    aiNode node;
    node.mMetaData = new aiMetadata();
    node.mMetaData->Add("collisionOffset", 4.0);
    Surface surface;
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetCollisionOffset(), 4);
    node.mMetaData->Set(0, "collisionOffset", 4.5);
    surface.SetCollisionOffset(1);
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetCollisionOffset(), 1);
}

TEST(SurfaceExtras, IgnoreValuesOfOtherTypes)
{
    aiNode node;
    Surface surface;
    surface.SetName("Box");
    surface.SetCollisionOffset(2);
    ApplyExtras(node, surface);
    node.mMetaData = new aiMetadata();
    node.mMetaData->Add("collisionOffset", aiString("many"));
    node.mMetaData->Add("surfaceName", 7);
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetCollisionOffset(), 2);
    EXPECT_EQ(surface.GetName(), "Box");
}

}  // namespace

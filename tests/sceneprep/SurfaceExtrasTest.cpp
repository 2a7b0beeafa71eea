#include <sceneprep/SurfaceExtras.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using Importing::Surface;

Surface MakeSurface(const char* name, int offset)
{
    Surface surface;
    surface.SetName(name);
    surface.SetCollisionOffset(offset);
    return surface;
}

aiMesh MeshCalled(const char* name)
{
    aiMesh mesh;
    mesh.mName = name;
    return mesh;
}

TEST(SurfaceExtras, OffsetAndNameTravelWithTheNode)
{
    Surface surface = MakeSurface("Box\r\nRed", 3);
    aiNode node;
    SetExtras(surface, MeshCalled("Box"), node);
    Surface back = MakeSurface("Box", 0);
    ApplyExtras(node, back);
    EXPECT_EQ(back.GetName(), "Box\r\nRed");
    EXPECT_EQ(back.GetCollisionOffset(), 3);
}

TEST(SurfaceExtras, WhatIsUsualNeedsNone)
{
    Surface surface = MakeSurface("Box", 0);
    aiNode node;
    SetExtras(surface, MeshCalled("Box"), node);
    EXPECT_EQ(node.mMetaData, nullptr);
    Surface nameless = MakeSurface("", 0);
    SetExtras(nameless, MeshCalled("Box"), node);
    EXPECT_EQ(node.mMetaData, nullptr);
}

TEST(SurfaceExtras, NumbersComeInSeveralTypes)
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

TEST(SurfaceExtras, ValuesOfOtherKindsAreLeft)
{
    aiNode node;
    Surface surface = MakeSurface("Box", 2);
    ApplyExtras(node, surface);
    node.mMetaData = new aiMetadata();
    node.mMetaData->Add("collisionOffset", aiString("many"));
    node.mMetaData->Add("surfaceName", 7);
    ApplyExtras(node, surface);
    EXPECT_EQ(surface.GetCollisionOffset(), 2);
    EXPECT_EQ(surface.GetName(), "Box");
}

}  // namespace

#include <importing/plugin/SceneContainer.h>

#include <support/SameScene.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::SameScene;

using Indices = std::vector<std::int32_t>;

Material Named(const std::string& name)
{
    Material material;
    material.SetName(name);
    return material;
}

Key At(std::uint32_t time)
{
    Key key;
    key.SetTime(time);
    return key;
}

/// Returns nodes with these child lists, named "0", "1", ...
SceneContainer WithNodes(const std::vector<Indices>& childLists)
{
    SceneContainer scene;
    for (std::size_t i = 0; i < childLists.size(); ++i)
    {
        Node& node = scene.NodeLibrary.emplace_back();
        node.SetName(std::to_string(i));
        node.ChildList = childLists[i];
    }
    return scene;
}

std::string TextOfBadSubscript(const std::function<void()>& action)
{
    try
    {
        action();
    }
    catch (const std::out_of_range& error)
    {
        return error.what();
    }
    return "nothing thrown";
}

// --- Geometry and surfaces ---------------------------------------------------------------------------------------

TEST(Libraries, GeometryIsAppendedEvenIfAnEqualOneExists)
{
    SceneContainer scene;
    Geometry geometry;
    geometry.VertexArray.emplace_back(1.0F, 2.0F, 3.0F);
    EXPECT_EQ(scene.AddGeometryToLibrary(geometry, true), 0);
    EXPECT_EQ(scene.AddGeometryToLibrary(geometry, true), 1);
    EXPECT_EQ(scene.AddGeometryToLibrary(geometry, false), 2);
    EXPECT_EQ(scene.GeometryLibrary.size(), 3U);
    EXPECT_EQ(geometry.VertexArray.size(), 1U) << "a copy was appended";
}

TEST(Libraries, AddedGeometryOfTheLibraryItselfIsCopied)
{
    SceneContainer scene;
    scene.CreateNewGeometryInLibrary();
    scene.GeometryLibrary[0].SetName("mesh");
    scene.GeometryLibrary.shrink_to_fit();
    EXPECT_EQ(scene.AddGeometryToLibrary(scene.GeometryLibrary[0], false), 1);
    EXPECT_EQ(scene.GeometryLibrary[1].GetName(), "mesh");
}

TEST(Libraries, CreatedGeometryIsDefaultConstructed)
{
    SceneContainer scene;
    EXPECT_EQ(scene.CreateNewGeometryInLibrary(), 0);
    EXPECT_EQ(scene.CreateNewGeometryInLibrary(), 1);
    EXPECT_EQ(scene.GeometryLibrary[1].GetName(), "");
    EXPECT_EQ(scene.GeometryLibrary[1].GetPolySize(), 3U);
    EXPECT_TRUE(scene.GeometryLibrary[1].VertexArray.empty());
}

TEST(Libraries, SurfaceIsAppendedRegardlessOfUnique)
{
    SceneContainer scene;
    Surface surface;
    surface.SetName("surface");
    EXPECT_EQ(scene.AddSurfaceToLibrary(surface, true), 0);
    EXPECT_EQ(scene.AddSurfaceToLibrary(surface, true), 1);
    EXPECT_EQ(scene.AddSurfaceToLibrary(surface, false), 2);
    EXPECT_EQ(scene.SurfaceLibrary[2].GetName(), "surface");
}

TEST(Libraries, ErasedGeometryIsEmptiedInPlace)
{
    SceneContainer scene = WithNodes({{}});
    scene.GeometryLibrary.resize(3);
    for (Geometry& geometry : scene.GeometryLibrary)
    {
        geometry.SetName("mesh");
        geometry.VertexArray.resize(3);
        geometry.SetPolySize(4);
    }
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(1);
    scene.NodeLibrary[0].SurfaceList = {0};

    scene.EraseGeometryFromLibrary(1);
    EXPECT_EQ(scene.GeometryLibrary.size(), 3U);
    EXPECT_TRUE(scene.GeometryLibrary[1].VertexArray.empty());
    EXPECT_EQ(scene.GeometryLibrary[1].GetName(), "");
    EXPECT_EQ(scene.GeometryLibrary[1].GetPolySize(), 4U);
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray.size(), 3U);
    EXPECT_EQ(scene.GeometryLibrary[2].VertexArray.size(), 3U);
    EXPECT_EQ(scene.SurfaceLibrary[0].GetGeometryID(), 1);
    EXPECT_EQ(scene.GetGeometryInstanceCount(1), 1);
}

TEST(Libraries, ErasedSurfaceIsEmptiedInPlace)
{
    SceneContainer scene;
    scene.SurfaceLibrary.resize(3);
    for (Surface& surface : scene.SurfaceLibrary)
    {
        surface.SetName("surface");
        surface.SetGeometryID(1);
        surface.MapList.resize(1);
    }
    scene.EraseSurfaceFromLibrary(1);
    EXPECT_EQ(scene.SurfaceLibrary.size(), 3U);
    EXPECT_EQ(scene.SurfaceLibrary[1].GetGeometryID(), -1);
    EXPECT_TRUE(scene.SurfaceLibrary[1].MapList.empty());
    EXPECT_EQ(scene.SurfaceLibrary[1].GetName(), "surface");
    EXPECT_EQ(scene.SurfaceLibrary[0].GetGeometryID(), 1);
    EXPECT_EQ(scene.SurfaceLibrary[2].GetGeometryID(), 1);
}

// --- Materials ---------------------------------------------------------------------------------------------------

TEST(Libraries, MaterialOfEqualContentIsFoundWithUnique)
{
    SceneContainer scene;
    Material brick = Named("brick");
    Material stone = Named("stone");
    Material sameBrick = Named("brick");
    EXPECT_EQ(scene.AddMaterialToLibrary(brick, true), 0);
    EXPECT_EQ(scene.AddMaterialToLibrary(sameBrick, true), 0);
    EXPECT_EQ(scene.MaterialLibrary.size(), 1U);
    EXPECT_EQ(scene.AddMaterialToLibrary(stone, true), 1);
    EXPECT_EQ(scene.AddMaterialToLibrary(sameBrick, true), 0);
    EXPECT_EQ(scene.MaterialLibrary.size(), 2U);
}

TEST(Libraries, MaterialIsAppendedEveryTimeWithoutUnique)
{
    SceneContainer scene;
    Material brick = Named("brick");
    EXPECT_EQ(scene.AddMaterialToLibrary(brick, false), 0);
    EXPECT_EQ(scene.AddMaterialToLibrary(brick, false), 1);
    EXPECT_EQ(scene.MaterialLibrary.size(), 2U);
}

TEST(Libraries, FirstOfEqualMaterialsIsFound)
{
    SceneContainer scene;
    Material stone = Named("stone");
    Material brick = Named("brick");
    scene.AddMaterialToLibrary(stone, false);
    scene.AddMaterialToLibrary(brick, false);
    scene.AddMaterialToLibrary(brick, false);
    EXPECT_EQ(scene.AddMaterialToLibrary(brick, true), 1);
}

TEST(Libraries, MaterialsThatDifferInTheLowestBitsAreEqual)
{
    SceneContainer scene;
    Material material = Named("brick");
    scene.AddMaterialToLibrary(material, true);
    material.SetOpacity(std::nextafter(1.0F, 2.0F));
    EXPECT_EQ(scene.AddMaterialToLibrary(material, true), 0);
}

TEST(Libraries, SearchForAMaterialComputesHashesUpToTheMatch)
{
    SceneContainer scene;
    scene.MaterialLibrary = {Named("a"), Named("b"), Named("c")};
    Material material = Named("b");
    EXPECT_EQ(scene.AddMaterialToLibrary(material, true), 1);
    EXPECT_TRUE(material.GetIsHashCodeValid());
    EXPECT_TRUE(scene.MaterialLibrary[0].GetIsHashCodeValid());
    EXPECT_TRUE(scene.MaterialLibrary[1].GetIsHashCodeValid());
    EXPECT_FALSE(scene.MaterialLibrary[2].GetIsHashCodeValid());

    Material other = Named("d");
    scene.AddMaterialToLibrary(other, false);
    EXPECT_FALSE(scene.MaterialLibrary[3].GetIsHashCodeValid()) << "without unique no hash is computed";
}

// --- Textures ----------------------------------------------------------------------------------------------------

TEST(Libraries, TextureIsStoredInLowerCaseWithoutSurroundingWhiteSpace)
{
    SceneContainer scene;
    EXPECT_EQ(scene.AddTextureToLibrary(" \t\v\r\nMaps\\Brick Wall.DDS \t\v\r\n", false), 0);
    EXPECT_EQ(scene.TextureLibrary[0], "maps\\brick wall.dds");
}

TEST(Libraries, TextureInAnotherMixOfCasesIsFoundWithUnique)
{
    SceneContainer scene;
    EXPECT_EQ(scene.AddTextureToLibrary("Wood.dds", true), 0);
    EXPECT_EQ(scene.AddTextureToLibrary("Brick.dds", true), 1);
    EXPECT_EQ(scene.AddTextureToLibrary(" bRICK.DDS\n", true), 1);
    EXPECT_EQ(scene.TextureLibrary.size(), 2U);
    EXPECT_EQ(scene.AddTextureToLibrary("BRICK.dds", false), 2);
    EXPECT_EQ(scene.TextureLibrary[2], "brick.dds");
    EXPECT_EQ(scene.AddTextureToLibrary("brick.dds", true), 1) << "the first of two equal ones";
}

TEST(Libraries, TextureOfOnlyWhiteSpaceIsStoredAsAnEmptyName)
{
    SceneContainer scene;
    EXPECT_EQ(scene.AddTextureToLibrary(" \t ", true), 0);
    EXPECT_EQ(scene.AddTextureToLibrary("", true), 0);
    EXPECT_EQ(scene.TextureLibrary[0], "");
}

TEST(Libraries, StoredTexturesAreComparedByteByByte)
{
    SceneContainer scene;
    scene.TextureLibrary = {"Brick.dds"};  // Stored directly, in a form that additions never store.
    EXPECT_EQ(scene.AddTextureToLibrary("Brick.dds", true), 1);
}

// --- Animations --------------------------------------------------------------------------------------------------

TEST(Libraries, AnimationOfEqualKeysIsFoundWithUnique)
{
    SceneContainer scene;
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1), At(2)}, true), 0);
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1), At(2)}, true), 0);
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1), At(2)}, false), 1);
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1), At(2)}, true), 0);
    EXPECT_EQ(scene.AnimationLibrary.size(), 2U);
}

TEST(Libraries, OrderAndNumberOfKeysMatter)
{
    SceneContainer scene;
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1), At(2)}, true), 0);
    EXPECT_EQ(scene.AddAnimationToLibrary({At(2), At(1)}, true), 1);
    EXPECT_EQ(scene.AddAnimationToLibrary({At(1)}, true), 2);
    EXPECT_EQ(scene.AddAnimationToLibrary({}, true), 3);
    EXPECT_EQ(scene.AddAnimationToLibrary({}, true), 3);
}

TEST(Libraries, AnimationWithANaNIsNeverFound)
{
    Key key;
    key.SetPosition(D3DXVECTOR3(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    SceneContainer scene;
    EXPECT_EQ(scene.AddAnimationToLibrary({key}, true), 0);
    EXPECT_EQ(scene.AddAnimationToLibrary({key}, true), 1);
}

// --- Counting ----------------------------------------------------------------------------------------------------

TEST(Libraries, InstancesAreCountedOncePerReference)
{
    SceneContainer scene = WithNodes({{}, {}});
    scene.SurfaceLibrary.resize(4);
    scene.SurfaceLibrary[0].SetGeometryID(7);
    scene.SurfaceLibrary[0].SetMaterialID(8);
    scene.SurfaceLibrary[1].SetGeometryID(7);
    scene.SurfaceLibrary[2].SetMaterialID(8);
    scene.SurfaceLibrary[3].SetGeometryID(7);  // not referenced
    scene.NodeLibrary[0].SurfaceList = {0, 1, 1};
    scene.NodeLibrary[1].SurfaceList = {2, 0};
    EXPECT_EQ(scene.GetGeometryInstanceCount(7), 4);
    EXPECT_EQ(scene.GetMaterialInstanceCount(8), 3);
    EXPECT_EQ(scene.GetGeometryInstanceCount(-1), 1);
    EXPECT_EQ(scene.GetMaterialInstanceCount(-1), 2);
    EXPECT_EQ(scene.GetGeometryInstanceCount(99), 0);
}

// --- Bad indices -------------------------------------------------------------------------------------------------

TEST(Libraries, BadIndexIsRefusedByEveryErasureAndChangesNothing)
{
    SceneContainer scene = WithNodes({{1}, {}});
    scene.GeometryLibrary.resize(2);
    scene.SurfaceLibrary.resize(2);
    scene.SetRootNodeIndex(1);
    const SceneContainer untouched(scene);
    for (const int index : {2, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
    {
        EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseNodeFromLibrary(index); }), "invalid vector<T> subscript");
        EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseGeometryFromLibrary(index); }), "invalid vector<T> subscript");
        EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseSurfaceFromLibrary(index); }), "invalid vector<T> subscript");
        EXPECT_TRUE(SameScene(scene, untouched)) << index;
    }
}

TEST(Libraries, ErasureFromAnEmptyLibraryIsRefused)
{
    SceneContainer scene;
    EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseNodeFromLibrary(0); }), "invalid vector<T> subscript");
    EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseGeometryFromLibrary(0); }), "invalid vector<T> subscript");
    EXPECT_EQ(TextOfBadSubscript([&] { scene.EraseSurfaceFromLibrary(0); }), "invalid vector<T> subscript");
}

TEST(Libraries, BadEntryOfASurfaceListIsRefusedByTheCounts)
{
    for (const std::int32_t entry : {1, -1})
    {
        SceneContainer scene = WithNodes({{}, {}});
        scene.SurfaceLibrary.resize(1);
        scene.NodeLibrary[1].SurfaceList = {0, entry};
        EXPECT_EQ(TextOfBadSubscript([&] { scene.GetGeometryInstanceCount(0); }), "invalid vector<T> subscript");
        EXPECT_EQ(TextOfBadSubscript([&] { scene.GetMaterialInstanceCount(0); }), "invalid vector<T> subscript");
    }
}

}  // namespace

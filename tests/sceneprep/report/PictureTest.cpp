#include <sceneprep/report/Picture.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <limits>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace Sceneprep::Report;
using Importing::SceneContainer;
using Support::Scene;

Picture Take(SceneContainer& scene, std::size_t limit = kMostTriangles)
{
    return TakePicture(scene, Measure(scene), limit);
}

/// A scene of one triangle, in the plane z = 0.
SceneContainer OneTriangle()
{
    SceneContainer scene = Scene("Root( A[a] )");
    Importing::Geometry& mesh = scene.GeometryLibrary[0];
    mesh.VertexArray.assign({Importing::Vertex(D3DXVECTOR3(1, 1, 0)), Importing::Vertex(D3DXVECTOR3(3, 1, 0)),
                             Importing::Vertex(D3DXVECTOR3(1, 5, 0))});
    mesh.IndexArray = {0, 1, 2};
    return scene;
}

TEST(Picture, CornersArePlacesInTheBox)
{
    SceneContainer scene = OneTriangle();
    const Picture picture = Take(scene);
    EXPECT_EQ(picture.triangles, 1U);
    EXPECT_EQ(picture.min, (std::array<double, 3>{1, 1, 0}));
    EXPECT_EQ(picture.max, (std::array<double, 3>{3, 5, 0}));
    EXPECT_EQ(picture.corners, (std::vector<Corner>{{0, 0, 0}, {65535, 0, 0}, {0, 65535, 0}}));
}

TEST(Picture, PlacesBetweenAreRounded)
{
    SceneContainer scene = OneTriangle();
    scene.GeometryLibrary[0].VertexArray.emplace_back(D3DXVECTOR3(2, 2, 0));
    scene.GeometryLibrary[0].IndexArray.insert(scene.GeometryLibrary[0].IndexArray.end(), {0, 1, 3});
    EXPECT_EQ(Take(scene).corners.back(), (Corner{32768, 16384, 0}));
}

TEST(Picture, FrontsStayFrontsWhereAMatrixMirrors)
{
    SceneContainer scene = OneTriangle();
    Support::NodeNamed(scene, "A").SetLocalTransform(Support::Scaling(-1, 1, 1));
    EXPECT_EQ(Take(scene).corners, (std::vector<Corner>{{65535, 0, 0}, {65535, 65535, 0}, {0, 0, 0}}));
}

TEST(Picture, PartsSayWhereTrianglesComeFrom)
{
    SceneContainer scene = Scene("Root( Empty P[a=box:red b=box] Q[a] )");
    Support::SurfaceNamed(scene, "b").SetCollisionOffset(7);
    const Picture picture = Take(scene);
    EXPECT_EQ(picture.parts, (std::vector<Part>{{12, 0, 0, 0}, {12, 0, -1, 7}, {12, 1, 0, 0}}));
    EXPECT_EQ(picture.nodeNames, (std::vector<std::string>{"P", "Q"}));
    EXPECT_EQ(picture.materialNames, std::vector<std::string>{"red"});
    EXPECT_EQ(picture.corners.size(), 3U * 36U);
}

TEST(Picture, ColorsAreBytesWhateverTheNumbers)
{
    SceneContainer scene = Scene("Root[a=box:red]");
    scene.MaterialLibrary[0].SetDiffuse({1, 0.5F, 0.2F, 0});
    EXPECT_EQ(Take(scene).materialColors, std::vector<std::uint32_t>{0xFF8033});
    scene.MaterialLibrary[0].SetDiffuse({9, -9, std::numeric_limits<float>::quiet_NaN(), 0});
    EXPECT_EQ(Take(scene).materialColors, std::vector<std::uint32_t>{0xFF0000});
}

TEST(Picture, BrokenTrianglesAreNotDrawn)
{
    SceneContainer scene = OneTriangle();
    scene.GeometryLibrary[0].VertexArray.emplace_back(D3DXVECTOR3(0, std::numeric_limits<float>::infinity(), 0));
    scene.GeometryLibrary[0].IndexArray = {0, 1, 3, 0, 1, 2};
    const Picture picture = Take(scene);
    EXPECT_EQ(picture.triangles, 1U);
    EXPECT_EQ(picture.corners.size(), 3U);
}

TEST(Picture, OfManyTrianglesSomeAreDrawnEvenly)
{
    SceneContainer scene = Scene("Root( P[a] Q[b] )");
    const Picture whole = Take(scene);
    const Picture picture = Take(scene, 8);
    EXPECT_EQ(picture.triangles, 24U);
    EXPECT_EQ(picture.parts, (std::vector<Part>{{4, 0, -1, 0}, {4, 1, -1, 0}}));
    ASSERT_EQ(picture.corners.size(), 24U);
    for (std::size_t triangle = 0; triangle < 8; ++triangle)  // each third one
        EXPECT_EQ(picture.corners[3 * triangle], whole.corners[3 * (3 * triangle + 2)]);
}

TEST(Picture, SurfacesOfWhichNothingIsDrawnAreNoParts)
{
    SceneContainer scene = Scene("Root( P[a] Q[b] )");
    EXPECT_EQ(Take(scene, 1).parts, (std::vector<Part>{{1, 1, -1, 0}}));
    EXPECT_TRUE(Take(scene, 0).parts.empty());
}

TEST(Picture, LongNamesAreCut)
{
    SceneContainer scene = Scene("Root[a]");
    scene.NodeLibrary[0].SetName(std::string(1000, 'n'));
    EXPECT_EQ(Take(scene).nodeNames, std::vector<std::string>{std::string(kLongestName, 'n')});
}

TEST(Picture, AnEmptySceneIsAnEmptyPicture)
{
    SceneContainer scene;
    const Picture picture = Take(scene);
    EXPECT_EQ(picture.triangles, 0U);
    EXPECT_TRUE(picture.corners.empty());
    EXPECT_TRUE(picture.parts.empty());
}

}  // namespace

#include <pipeline/scene/ShownSurfaces.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <limits>
#include <stdexcept>
#include <string>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;

/// Returns each reference as "node:surface", in the order of the calls.
std::string References(SceneContainer& scene)
{
    std::string text;
    ForEachShownSurface(scene, [&](const ShownSurface& shown) {
        text +=
            scene.NodeLibrary.at(static_cast<std::size_t>(shown.node)).GetName() + ':' + shown.surface.GetName() + ' ';
    });
    return text;
}

TEST(ShownSurfaces, AreVisitedInTheOrderOfTheWalk)
{
    SceneContainer scene = Scene("Root[a]( P[b c]( Q[d] ) S[a] ) | Lost[e]");
    EXPECT_EQ(References(scene), "Root:a P:b P:c Q:d S:a ");
}

TEST(ShownSurfaces, SurfacesWithoutTrianglesAreSkipped)
{
    SceneContainer scene = Scene("Root[a b c]");
    Support::SurfaceNamed(scene, "a").SetGeometryID(-1);
    Support::MeshOf(scene, "b").SetPolySize(4);
    EXPECT_EQ(References(scene), "Root:c ");
}

TEST(ShownSurfaces, HaveTheirWorldMatrix)
{
    SceneContainer scene = Scene("Root@10,0,0( P@0,5,0[a] )");
    ForEachShownSurface(scene, [](const ShownSurface& shown) {
        EXPECT_EQ(ToWorld({1, 2, 3}, shown.world), (WorldPoint{11, 7, 3}));
    });
}

TEST(ShownSurfaces, AnInvalidIndexIsRefused)
{
    SceneContainer scene = Scene("Root[a]");
    Support::MeshOf(scene, "a").IndexArray.back() = 8;
    EXPECT_THROW(References(scene), std::out_of_range);
}

TEST(ShownSurfaces, PointsAreFiniteOrNot)
{
    EXPECT_TRUE(IsFinite({1, 2, 3}));
    EXPECT_FALSE(IsFinite({1, std::numeric_limits<double>::infinity(), 3}));
    EXPECT_FALSE(IsFinite({1, 2, std::numeric_limits<double>::quiet_NaN()}));
}

}  // namespace

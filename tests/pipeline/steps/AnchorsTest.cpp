#include <pipeline/steps/Anchors.h>

#include <gtest/gtest.h>
#include <importing/math/SameBits.h>
#include <pipeline/TestScene.h>

#include <string>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

/// Returns the name of the anchor of each node, in the order of the library.
std::string AnchorNames(TestScene& scene, bool ignoreAnimation = false)
{
    const Anchors anchors = FindAnchors(scene, WalkFromRoot(scene.container), ignoreAnimation);
    std::string names;
    for (const int anchor : anchors.of)
        names += anchor < 0 ? "- " : scene.container.NodeLibrary[static_cast<std::size_t>(anchor)].GetName() + ' ';
    return names;
}

TEST(Anchors, AreTheRootAndAnimatedAndKeptNodes)
{
    TestScene scene("Root( A( X*( B( Y* C ) ) K( D ) ) ) | Orphan");
    EXPECT_EQ(AnchorNames(scene), "Root Root X X Y X Root Root - ");
    scene.supplement.keptNodes = {false, false, false, false, false, false, true};
    EXPECT_EQ(AnchorNames(scene), "Root Root X X Y X K K - ");
    EXPECT_EQ(AnchorNames(scene, true), "Root Root Root Root Root Root K K - ");
}

TEST(Anchors, TransformsAreInTheFrameOfTheAnchor)
{
    TestScene scene("Root@9,0,0( A@1,0,0( X@0,1,0*( B@0,0,1( C@0,0,2 ) ) ) )");
    const Anchors anchors = FindAnchors(scene, WalkFromRoot(scene.container), false);
    const D3DXMATRIX still = Support::Translation(0, 0, 0);
    EXPECT_TRUE(Importing::SameBits(anchors.transforms[0], still));
    EXPECT_TRUE(Importing::SameBits(anchors.transforms[1], Support::Translation(1, 0, 0)));
    EXPECT_TRUE(Importing::SameBits(anchors.transforms[2], still));
    EXPECT_TRUE(Importing::SameBits(anchors.transforms[4], Support::Translation(0, 0, 3)));
    EXPECT_EQ(anchors.order, (std::vector<int>{0, 2}));
    EXPECT_TRUE(anchors.Stays(2));
    EXPECT_FALSE(anchors.Stays(3));
}

}  // namespace

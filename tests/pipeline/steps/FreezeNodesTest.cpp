#include <pipeline/steps/FreezeNodes.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/steps/PrepareScene.h>

namespace
{

using namespace Pipeline;
using PipelineTests::RecordingListener;
using PipelineTests::TestScene;
using Support::ToText;

TEST(FreezeNodes, MarksMatchingNodesAndWhatIsBelowThem)
{
    TestScene scene("Root( Wheel1( Rim( Bolt ) ) Door( Wheel22 ) ) | Wheel9");
    EXPECT_TRUE(FreezeNodes(scene, {"Wheel?", "Do*"}).empty());
    EXPECT_EQ(scene.supplement.frozenNodes, (std::vector<bool>{false, true, true, true, true, true, false}));
}

TEST(FreezeNodes, ReturnsPatternsThatMatchNothing)
{
    TestScene scene("Root( A B )");
    EXPECT_EQ(FreezeNodes(scene, {"C", "A", "?oo"}), (std::vector<std::string>{"C", "?oo"}));
    EXPECT_EQ(scene.supplement.frozenNodes, (std::vector<bool>{false, true, false}));
    EXPECT_TRUE(FreezeNodes(scene, {}).empty());
}

TEST(FreezeNodes, NamesAreThoseBeforeAnyStep)
{
    TestScene scene("Root( P@1,0,0( Door@0,1,0[a=m:c b=n:c]( Knob@0,0,1[d=o:c] ) ) Q( R[e=p:c f=q:c] ) )");
    Support::NodeNamed(scene.container, "R").SetName("Knob");
    RecordingListener listener;
    const PrepareResult result = PrepareScene(scene.container, {.uniqueNames = true, .flatten = true, .keep = {"Knob"}},
                                              scene.supplement, listener);
    EXPECT_TRUE(result.unusedKeeps.empty());
    EXPECT_EQ(ToText(scene.container), "Root[a]( Door( Knob(1)[d] ) Knob[e f] )");
}

}  // namespace

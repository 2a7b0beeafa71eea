#include <sceneprep/export/plan/ExportPlan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;

class ExportPlanTest : public testing::Test
{
protected:
    ExportPlan Plan(bool hasBones = false, bool animatedNodesNeedNames = false)
    {
        PlanRequest request;
        request.isShown = [](int) { return true; };
        if (hasBones)
            request.hasBones = [](int, int) { return true; };
        request.animatedNodesNeedNames = animatedNodesNeedNames;
        return MakeExportPlan(scene_, request);
    }

    static std::vector<std::string> NamesOf(const ExportPlan& plan)
    {
        std::vector<std::string> names;
        for (const PlannedNode& node : plan.nodes)
            names.push_back(node.name);
        return names;
    }

    Importing::SceneContainer scene_ = Support::Scene("Root( A[a]( C ) B[b] )");
};

TEST_F(ExportPlanTest, NodesAreInTheOrderOfTheWalk)
{
    const ExportPlan plan = Plan();
    EXPECT_THAT(NamesOf(plan), ElementsAre("Root", "A", "C", "B"));
    EXPECT_EQ(plan.nodes[0].parent, -1);
    EXPECT_EQ(plan.nodes[2].parent, 1);
    EXPECT_EQ(plan.nodes[3].parent, 0);
    EXPECT_EQ(plan.nodeOf[static_cast<std::size_t>(plan.nodes[3].source)], 3);
}

TEST_F(ExportPlanTest, IsEmptyWithoutARoot)
{
    scene_.SetRootNodeIndex(-1);
    EXPECT_TRUE(Plan().nodes.empty());
}

TEST_F(ExportPlanTest, ListsTheSurfacesThatAreShown)
{
    PlanRequest request;
    request.isShown = [](int geometry) { return geometry == 1; };
    const ExportPlan plan = MakeExportPlan(scene_, request);
    EXPECT_TRUE(plan.nodes[1].surfaces.empty());
    ASSERT_EQ(plan.nodes[3].surfaces.size(), 1U);
    EXPECT_EQ(plan.nodes[3].surfaces[0].geometry, 1);
    EXPECT_EQ(plan.nodes[3].surfaces[0].skeleton, -1);
}

TEST_F(ExportPlanTest, AnimationsWithoutKeysAreIgnored)
{
    scene_.AnimationLibrary.resize(2);
    scene_.AnimationLibrary[1].resize(1);
    for (int node = 0; node < 3; ++node)
        scene_.NodeLibrary[static_cast<std::size_t>(node)].SetAnimationID(node);
    const ExportPlan plan = Plan();
    EXPECT_EQ(plan.nodes[0].animation, -1);
    EXPECT_EQ(plan.nodes[static_cast<std::size_t>(plan.nodeOf[1])].animation, 1);
    EXPECT_EQ(plan.nodes[static_cast<std::size_t>(plan.nodeOf[2])].animation, -1);
}

TEST_F(ExportPlanTest, JointsThatAreNotNodesFollowTheNodes)
{
    scene_.GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    const ExportPlan plan = Plan(true);
    ASSERT_EQ(plan.nodes.size(), 5U);
    EXPECT_EQ(plan.nodes[4].source, -1);
    EXPECT_EQ(plan.nodes[4].parent, 1);
    EXPECT_EQ(plan.nodes[1].surfaces.at(0).skeleton, 0);
    EXPECT_THAT(plan.skeletons.at(0), ElementsAre(4));
}

TEST_F(ExportPlanTest, AnimatedNodesGetUniqueNamesOnRequest)
{
    for (Importing::Node& node : scene_.NodeLibrary)
    {
        node.SetName("Same");
        node.SetAnimationID(0);
    }
    EXPECT_THAT(NamesOf(Plan()), ElementsAre("Same", "Same", "Same", "Same"));
    EXPECT_THAT(NamesOf(Plan(false, true)), ElementsAre("Same_2", "Same_3", "Same_4", "Same_5"));
}

}  // namespace

#include <importing/plugin/SceneContainer.h>
#include <support/RecordingContainer.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

namespace
{

using namespace Importing;
using Support::RecordingContainer;
using Support::Scene;

TEST(Overrides, ClearSetsStatusAndNameThroughTheVirtualTableAndTheRootDirectly)
{
    RecordingContainer scene(Scene("Root[a]"));
    scene.Clear();
    EXPECT_EQ(scene.Calls({"Clear", "SetStatus", "SetName", "SetRootNodeIndex"}),
              R"(Clear() SetStatus(-1) SetName(""))");
    EXPECT_EQ(scene.GetRootNodeIndex(), -1);
}

TEST(Overrides, WorldMatricesAreReadLevelByLevel)
{
    RecordingContainer scene(Scene("Root( A( B( C ) ) )"));
    scene.CalculateGlobalTM(2);
    EXPECT_EQ(scene.Calls({"CalculateGlobalTM", "FindParentNode"}),
              "CalculateGlobalTM(2) FindParentNode(2) CalculateGlobalTM(1) FindParentNode(1) "
              "CalculateGlobalTM(0) FindParentNode(0)");
}

TEST(Overrides, AnOverriddenParentIsUsed)
{
    class Flat : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int FindParentNode(int) const override { return -1; }
    };
    Flat scene(Scene("Root@1,0,0( A@1,0,0 )"));
    EXPECT_EQ(scene.CalculateGlobalTM(1)._41, 1);
    EXPECT_EQ(SceneContainer(scene).CalculateGlobalTM(1)._41, 2);
}

TEST(Overrides, AnOverriddenWorldMatrixOfTheParentIsUsed)
{
    class Shifted : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        D3DXMATRIX CalculateGlobalTM(int index) override
        {
            return index == 0 ? Support::Translation(100, 0, 0) : DerivedContainer::CalculateGlobalTM(index);
        }
    };
    Shifted scene(Scene("Root@1,0,0( A@1,0,0 )"));
    EXPECT_EQ(scene.CalculateGlobalTM(1)._41, 101);
}

TEST(Overrides, ErasingTheRootWritesTheRootNodeIndexDirectly)
{
    RecordingContainer scene(Scene("A | B | Root"));
    scene.SetRootNodeIndex(2);
    scene.Forget();
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.Calls({"SetRootNodeIndex", "EraseNodeFromLibrary"}), "EraseNodeFromLibrary(0)");
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
}

}  // namespace

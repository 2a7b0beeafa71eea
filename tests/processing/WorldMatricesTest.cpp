#include <importing/processing/WorldMatrices.h>

#include <importing/math/SameBits.h>
#include <support/Expectations.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

namespace
{

using namespace Importing;
using Support::NodeIndex;
using Support::Scene;

/// Overrides the global matrix and counts the calls.
class CountingContainer : public SceneContainer
{
public:
    using SceneContainer::SceneContainer;
    explicit CountingContainer(const SceneContainer& scene) : SceneContainer(scene) {}

    D3DXMATRIX CalculateGlobalTM(int index) override
    {
        ++calls_;
        return Support::Translation(static_cast<float>(index), 0, 0);
    }

    int Calls() const { return calls_; }

private:
    int calls_ = 0;
};

TEST(WorldMatrices, EqualThoseOfCalculateGlobalTM)
{
    SceneContainer scene = Scene("Root@1,2,3( P@0.1,0,0( Q@7,0,0 R@0,0.3,0( S@1,1,1 ) ) ) | Orphan@4,4,4");
    WorldMatrices matrices(scene);
    for (const char* name : {"S", "Q", "Root", "Orphan", "R", "P"})
    {
        const int node = NodeIndex(scene, name);
        EXPECT_TRUE(SameBits(matrices.Of(node), scene.CalculateGlobalTM(node))) << name;
    }
}

TEST(WorldMatrices, CallADerivedContainerOnceForEachNode)
{
    CountingContainer scene(Scene("Root( P( Q ) )"));
    WorldMatrices matrices(scene);
    matrices.Of(2);
    matrices.Of(2);
    EXPECT_TRUE(SameBits(matrices.Of(1), Support::Translation(1, 0, 0)));
    EXPECT_EQ(scene.Calls(), 2);
}

TEST(WorldMatrices, ThrowForABadIndex)
{
    SceneContainer scene = Scene("Root( P )");
    WorldMatrices matrices(scene);
    for (const int bad : {-1, 2, 1000})
        Support::ExpectThrow<std::out_of_range>([&] { matrices.Of(bad); }, "invalid vector<T> subscript");
}

TEST(WorldMatrices, ThrowOnlyForNodesInOrBelowACycle)
{
    SceneContainer scene = Scene("Root( P ) | A( B ) | C");
    Support::NodeNamed(scene, "B").ChildList.push_back(NodeIndex(scene, "A"));
    Support::NodeNamed(scene, "B").ChildList.push_back(NodeIndex(scene, "C"));
    WorldMatrices matrices(scene);
    for (const char* name : {"A", "B", "C", "A"})
        Support::ExpectThrow<std::runtime_error>([&] { matrices.Of(NodeIndex(scene, name)); },
                                                 "cycle in the node hierarchy");
    EXPECT_NO_THROW(matrices.Of(NodeIndex(scene, "P")));
}

TEST(WorldMatrices, AreComputedWithoutRecursion)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    WorldMatrices matrices(scene);
    EXPECT_EQ(matrices.Of(static_cast<int>(Support::kDeep) - 1)._41, static_cast<float>(Support::kDeep - 1));
}

}  // namespace

#include <importing/processing/EraseNodes.h>

#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RandomScene.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::Scene;
using Support::ToText;

/// Calls EraseNodes on a scene and sets the resulting root node index.
void Erase(SceneContainer& scene, const std::vector<std::uint32_t>& erased)
{
    std::int32_t root = scene.GetRootNodeIndex();
    EraseNodes(scene.NodeLibrary, root, erased);
    scene.SetRootNodeIndex(root);
}

TEST(EraseNodes, NothingToEraseChangesNothing)
{
    SceneContainer scene = Scene("Root( A ) | B");
    const SceneContainer before(scene);
    Erase(scene, {});
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(EraseNodes, TheLastNodeReplacesAnErasedOneAndChildListsAreUpdated)
{
    SceneContainer scene = Scene("Root( A C ) | B");
    Erase(scene, {1});
    EXPECT_EQ(ToText(scene), "Root( C ) | B");
    EXPECT_EQ(Support::NodeIndex(scene, "B"), 1);
}

TEST(EraseNodes, TheRootNodeIndexIsUpdatedOnlyIfTheRootMoves)
{
    SceneContainer scene = Scene("A | B | Root");
    scene.SetRootNodeIndex(2);
    Erase(scene, {0});
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
    Erase(scene, {0, 1});
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
    EXPECT_TRUE(scene.NodeLibrary.empty());
}

TEST(EraseNodes, AnIndexThatOccursTwiceAlsoErasesTheNodeThatMovedIntoItsPlace)
{
    SceneContainer scene = Scene("Root( A B ) | C");
    Erase(scene, {1, 1});
    EXPECT_EQ(ToText(scene), "Root( B )");
}

/// Calls EraseNodeFromLibrary from the largest index down, until it throws.
std::string EraseOneByOne(SceneContainer& scene, const std::vector<std::uint32_t>& erased)
{
    try
    {
        for (auto index = erased.rbegin(); index != erased.rend(); ++index)
            scene.EraseNodeFromLibrary(static_cast<int>(*index));
    }
    catch (const std::out_of_range& exception)
    {
        return exception.what();
    }
    return {};
}

/// Expects that erasing at once and one by one has the same exception, or none, and the same scene.
void ExpectSameErasing(SceneContainer& scene, const std::vector<std::uint32_t>& erased)
{
    SceneContainer expected(scene);
    const std::string outcome = EraseOneByOne(expected, erased);
    std::int32_t root = scene.GetRootNodeIndex();
    if (outcome.empty())
        EXPECT_NO_THROW(EraseNodes(scene.NodeLibrary, root, erased));
    else
        Support::ExpectThrow<std::out_of_range>([&] { EraseNodes(scene.NodeLibrary, root, erased); }, outcome);
    scene.SetRootNodeIndex(root);
    EXPECT_TRUE(Support::SameScene(scene, expected));
}

TEST(EraseNodes, AnIndexThatIsBadAtItsTurnThrowsAfterTheLargerOnesAreErased)
{
    for (const std::vector<std::uint32_t>& erased : {std::vector<std::uint32_t>{3}, {2, 2}, {1, 2, 2}, {0, 4000000000}})
    {
        SceneContainer scene = Scene("Root( A B )");
        SceneContainer expected(scene);
        EXPECT_EQ(EraseOneByOne(expected, erased), "invalid vector<T> subscript");
        ExpectSameErasing(scene, erased);
    }
}

TEST(EraseNodes, MatchesErasingOneNodeAfterAnother)
{
    for (std::uint32_t seed = 1; seed <= 1000 && !HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Support::Dice dice(seed);
        SceneContainer scene = Support::RandomScene(dice, {});
        const int count = static_cast<int>(scene.NodeLibrary.size());
        std::vector<std::uint32_t> erased;
        for (int i = dice.Between(0, count); i > 0; --i)
            erased.push_back(static_cast<std::uint32_t>(dice.Below(count)));
        std::sort(erased.begin(), erased.end());
        if (!dice.OneIn(4))
            erased.erase(std::unique(erased.begin(), erased.end()), erased.end());
        ExpectSameErasing(scene, erased);
    }
}

}  // namespace

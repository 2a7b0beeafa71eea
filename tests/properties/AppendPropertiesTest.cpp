#include <models/SceneModels.h>
#include <properties/CompareForms.h>

#include <gtest/gtest.h>

namespace
{

using namespace Importing;
using Properties::CompareForms;
using Properties::Trials;
using Support::Dice;
using Support::RandomScene;

Trials AllKinds()
{
    Trials trials;
    trials.options.missingMeshes = true;
    trials.options.largePolygons = true;
    return trials;
}

TEST(AppendProperties, SeveralScenesInSequence)
{
    const auto append = [](SceneContainer& scene, Dice& dice, bool byModel) {
        for (int count = dice.Between(1, 3); count > 0; --count)
        {
            SceneContainer other = RandomScene(dice, AllKinds().options);
            if (dice.OneIn(4))
                other.SetRootNodeIndex(-1);
            if (dice.OneIn(8))
                other.Clear();
            const SceneContainer before(other);
            if (byModel)
                Models::AppendSC(scene, other);
            else
                EXPECT_EQ(scene.AppendSC(&other), 0);
            EXPECT_TRUE(Support::SameScene(other, before)) << "the other scene is only read";
        }
    };
    CompareForms(
        AllKinds(), [&](SceneContainer& scene, Dice& dice) { append(scene, dice, false); },
        [&](SceneContainer& scene, Dice& dice) { append(scene, dice, true); });
}

TEST(AppendProperties, ASceneToItself)
{
    CompareForms(
        AllKinds(), [](SceneContainer& scene, Dice&) { EXPECT_EQ(scene.AppendSC(&scene), 0); },
        [](SceneContainer& scene, Dice&) { Models::AppendSC(scene, scene); });
}

TEST(AppendProperties, ASceneToAnEmptyOne)
{
    const auto refill = [](SceneContainer& scene, bool byModel) {
        SceneContainer other(scene);
        scene.Clear();
        if (byModel)
            Models::AppendSC(scene, other);
        else
            EXPECT_EQ(scene.AppendSC(&other), 0);
    };
    CompareForms(
        AllKinds(), [&](SceneContainer& scene, Dice&) { refill(scene, false); },
        [&](SceneContainer& scene, Dice&) { refill(scene, true); });
}

}  // namespace

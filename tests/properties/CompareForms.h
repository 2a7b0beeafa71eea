#pragma once

#include <importing/plugin/SceneContainer.h>
#include <support/RandomScene.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <string>

namespace Properties
{

/// An operation on a scene with random arguments.
using Operation = std::function<void(Importing::SceneContainer&, Support::Dice&)>;

/// The kind and number of random scenes.
struct Trials
{
    Support::RandomSceneOptions options;
    std::uint32_t count = 1000;
    std::uint32_t firstSeed = 1;
};

/// Returns the text of the exception that the operation throws, or an empty text.
inline std::string Outcome(const Operation& operation, Importing::SceneContainer& scene, std::uint32_t seed)
{
    Support::Dice arguments(seed);
    try
    {
        operation(scene, arguments);
    }
    catch (const std::exception& exception)
    {
        return exception.what();
    }
    return {};
}

/// Runs the library's operation on a plain and on a derived container, and the model on a third copy of each random
/// scene. Expects the same exception from all three, or the same scene bit for bit. Stops at the first seed that fails.
///
/// Also expects that most trials succeed and that many change the scene, so that the comparison is meaningful.
inline void CompareForms(const Trials& trials, const Operation& operation, const Operation& model)
{
    std::uint32_t passed = 0;
    std::uint32_t changed = 0;
    for (std::uint32_t seed = trials.firstSeed; seed < trials.firstSeed + trials.count; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Support::Dice dice(seed);
        const Importing::SceneContainer scene = Support::RandomScene(dice, trials.options);
        Importing::SceneContainer plain(scene);
        Importing::SceneContainer expected(scene);
        Support::DerivedContainer derived(scene);

        const std::string outcome = Outcome(model, expected, seed);
        ASSERT_EQ(Outcome(operation, plain, seed), outcome);
        ASSERT_EQ(Outcome(operation, derived, seed), outcome);
        if (!outcome.empty())
            continue;
        ++passed;
        ASSERT_TRUE(Support::SameScene(plain, expected)) << "plain container against model";
        ASSERT_TRUE(Support::SameScene(derived, expected)) << "derived container against model";
        if (!Support::SameScene(scene, expected))
            ++changed;
    }
    EXPECT_GT(passed, trials.count / 2);
    EXPECT_GT(changed, trials.count / 4);
}

}  // namespace Properties

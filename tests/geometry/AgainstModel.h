#pragma once

#include <support/RandomMesh.h>
#include <support/SameBits.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace Support
{

/// The number of random meshes on which an operation is compared with its plain model.
inline constexpr std::uint32_t kRandomMeshes = 400;

/// Returns the result of a call, or its exception, as text.
template <typename Call>
std::string OutcomeOf(Call call)
{
    try
    {
        return "returned " + std::to_string(call());
    }
    catch (const std::out_of_range& error)
    {
        return std::string("out_of_range: ") + error.what();
    }
    catch (const std::length_error& error)
    {
        return std::string("length_error: ") + error.what();
    }
}

/// Returns whether operation and model, each called with a copy of the mesh, have the same outcome and result in the
/// same mesh. All NaNs are equal.
template <typename Operation, typename Model>
testing::AssertionResult SameOutcome(const Importing::Geometry& start, Operation operation, Model model)
{
    Importing::Geometry actual = start;
    Importing::Geometry expected = start;
    const std::string actualOutcome = OutcomeOf([&] { return std::invoke(operation, actual); });
    const std::string expectedOutcome = OutcomeOf([&] { return std::invoke(model, expected); });
    if (actualOutcome != expectedOutcome)
        return testing::AssertionFailure() << actualOutcome << ", expected " << expectedOutcome;
    return SameGeometry(actual, expected, NaNs::AllAlike);
}

/// Compares an operation with its plain model on random meshes. Reports the first seed that differs.
template <typename Operation, typename Model>
void ExpectLikeModel(Operation operation, Model model, const RandomMeshOptions& options = {})
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
        ASSERT_TRUE(SameOutcome(RandomMesh(seed, options), operation, model)) << "seed " << seed;
}

}  // namespace Support

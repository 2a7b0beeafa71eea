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

/// The number of random meshes that an operation and its plain model are compared on.
inline constexpr std::uint32_t kRandomMeshes = 400;

/// What a call came to, as text: its result or its exception.
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

/// Whether operation and model, both called with a copy of the mesh, have the same outcome and leave the same mesh.
/// NaNs count as alike.
template <typename Operation, typename Model>
testing::AssertionResult SameOutcome(const Importing::Geometry& start, Operation operation, Model model)
{
    Importing::Geometry actual = start;
    Importing::Geometry expected = start;
    const std::string actualOutcome = OutcomeOf([&] { return std::invoke(operation, actual); });
    const std::string expectedOutcome = OutcomeOf([&] { return std::invoke(model, expected); });
    if (actualOutcome != expectedOutcome)
        return testing::AssertionFailure() << actualOutcome << " where expected " << expectedOutcome;
    return SameGeometry(actual, expected, NaNs::AllAlike);
}

/// Compares an operation with its plain model on random meshes; tells the first seed that differs.
template <typename Operation, typename Model>
void ExpectLikeModel(Operation operation, Model model, const RandomMeshOptions& options = {})
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
        ASSERT_TRUE(SameOutcome(RandomMesh(seed, options), operation, model)) << "seed " << seed;
}

}  // namespace Support

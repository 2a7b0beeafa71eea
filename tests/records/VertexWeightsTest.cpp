#include <importing/records/VertexWeights.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace
{

using Importing::VertexWeights;

VertexWeights Filled()
{
    VertexWeights weights;
    weights.SetJoints(1, 2, 3, 4);
    weights.SetWeights(0.1F, 0.2F, 0.3F, 0.4F);
    return weights;
}

TEST(VertexWeights, Defaults)
{
    const VertexWeights weights;
    for (std::uint32_t i = 0; i < 4; ++i)
    {
        EXPECT_EQ(weights.GetJoint(i), -1);
        EXPECT_EQ(weights.GetWeight(i), 0.0F);
    }
}

TEST(VertexWeights, SettersOfAllSlots)
{
    const VertexWeights weights = Filled();
    for (std::uint32_t i = 0; i < 4; ++i)
    {
        EXPECT_EQ(weights.GetJoint(i), static_cast<int>(i) + 1);
        EXPECT_FLOAT_EQ(weights.GetWeight(i), 0.1F * static_cast<float>(i + 1));
    }
}

TEST(VertexWeights, SettersOfOneSlotKeepTheOthers)
{
    VertexWeights weights = Filled();
    weights.SetJoint(2, 77);
    weights.SetWeight(1, 0.75F);
    EXPECT_EQ(weights.GetJoint(2), 77);
    EXPECT_EQ(weights.GetWeight(1), 0.75F);
    EXPECT_EQ(weights.GetJoint(1), 2);
    EXPECT_EQ(weights.GetWeight(2), 0.3F);
}

TEST(VertexWeights, SlotBeyondTheFourthThrows)
{
    VertexWeights weights = Filled();
    for (const std::uint32_t slot : {4U, 5U, std::numeric_limits<std::uint32_t>::max()})
    {
        EXPECT_THROW(weights.GetJoint(slot), std::out_of_range);
        EXPECT_THROW(weights.GetWeight(slot), std::out_of_range);
        EXPECT_THROW(weights.SetJoint(slot, 1), std::out_of_range);
        EXPECT_THROW(weights.SetWeight(slot, 1), std::out_of_range);
    }
    EXPECT_TRUE(weights == Filled());
    try
    {
        weights.GetWeight(4);
    }
    catch (const std::out_of_range& error)
    {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
}

TEST(VertexWeights, CopiesHaveAllSlots)
{
    const VertexWeights original = Filled();
    const VertexWeights copy(original);  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_TRUE(copy == original);
    VertexWeights assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    EXPECT_TRUE(assigned == original);
}

TEST(VertexWeights, EverySlotIsCompared)
{
    const VertexWeights original = Filled();
    for (std::uint32_t i = 0; i < 4; ++i)
    {
        VertexWeights joint = original;
        joint.SetJoint(i, 99);
        EXPECT_TRUE(original != joint) << i;
        EXPECT_FALSE(original == joint) << i;
        VertexWeights weight = original;
        weight.SetWeight(i, 99);
        EXPECT_TRUE(original != weight) << i;
    }
}

TEST(VertexWeights, WeightsAreComparedAsNumbers)
{
    VertexWeights zero;
    VertexWeights minusZero;
    minusZero.SetWeight(0, -0.0F);
    EXPECT_TRUE(zero == minusZero);

    VertexWeights nan;
    nan.SetWeight(3, std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(nan == VertexWeights(nan));
    EXPECT_TRUE(nan != VertexWeights(nan));
}

/// Weights that override their getters.
class FixedWeights : public VertexWeights
{
public:
    int GetJoint(std::uint32_t i) const override { return static_cast<int>(i) + 1; }
    float GetWeight(std::uint32_t i) const override { return Filled().GetWeight(i); }
};

TEST(VertexWeights, ComparisonReadsTheOtherThroughItsGetters) { EXPECT_TRUE(Filled() == FixedWeights()); }

}  // namespace

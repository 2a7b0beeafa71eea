#include <sceneprep/export/gltf/Weights.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using Importing::Geometry;
using Sceneprep::Gltf::CollectWeights;
using Sceneprep::Gltf::WeightSets;

class GltfWeights : public testing::Test
{
protected:
    GltfWeights() : mesh_(Support::Triangle()) { mesh_.JointArray.resize(6); }

    void Weigh(std::size_t vertex, std::uint32_t joint, float weight)
    {
        mesh_.VertexArray[vertex].AddWeight(joint, weight);
    }

    Geometry mesh_;
};

TEST_F(GltfWeights, AMeshWithoutWeightsHasNoSkin) { EXPECT_FALSE(CollectWeights(mesh_)); }

TEST_F(GltfWeights, AnInvalidJointMakesTheSkinUnusable)
{
    Weigh(1, 6, 1);
    EXPECT_FALSE(CollectWeights(mesh_));
}

TEST_F(GltfWeights, WeightsAddUpToOneAndTheLargestIsFirst)
{
    Weigh(0, 2, 1);
    Weigh(0, 4, 3);
    const WeightSets sets = CollectWeights(mesh_).value();
    ASSERT_EQ(sets.joints.size(), 1U);
    EXPECT_EQ(sets.joints[0][0], (std::array<std::uint16_t, 4>{4, 2, 0, 0}));
    EXPECT_EQ(sets.weights[0][0], (std::array<float, 4>{0.75F, 0.25F, 0, 0}));
}

TEST_F(GltfWeights, VerticesWithNormalisedWeightsAreCounted)
{
    Weigh(0, 0, 0.25F);
    Weigh(0, 1, 0.75F);
    Weigh(1, 0, 0.5F);
    EXPECT_EQ(CollectWeights(mesh_).value().normalized, 2U) << "one with half, one without weights";
    Weigh(1, 1, 0.5F);
    Weigh(2, 1, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(CollectWeights(mesh_).value().normalized, 1U);
}

TEST_F(GltfWeights, AVertexWithoutWeightsFollowsTheFirstJoint)
{
    Weigh(0, 2, 1);
    const WeightSets sets = CollectWeights(mesh_).value();
    EXPECT_EQ(sets.joints[0][1], (std::array<std::uint16_t, 4>{0, 0, 0, 0}));
    EXPECT_EQ(sets.weights[0][1], (std::array<float, 4>{1, 0, 0, 0}));
}

TEST_F(GltfWeights, WeightsOfOneJointAreAdded)
{
    Weigh(0, 2, 1);
    Weigh(0, 3, 1);
    Weigh(0, 2, 2);
    const WeightSets sets = CollectWeights(mesh_).value();
    EXPECT_EQ(sets.joints[0][0], (std::array<std::uint16_t, 4>{2, 3, 0, 0}));
    EXPECT_EQ(sets.weights[0][0], (std::array<float, 4>{0.75F, 0.25F, 0, 0}));
}

TEST_F(GltfWeights, MoreThanFourJointsNeedASecondSet)
{
    for (std::uint32_t joint = 0; joint < 5; ++joint)
        Weigh(2, joint, joint == 4 ? 4.0F : 1.0F);
    const WeightSets sets = CollectWeights(mesh_).value();
    ASSERT_EQ(sets.joints.size(), 2U);
    EXPECT_EQ(sets.joints[0][2], (std::array<std::uint16_t, 4>{4, 0, 1, 2}));
    EXPECT_EQ(sets.joints[1][2], (std::array<std::uint16_t, 4>{3, 0, 0, 0}));
    EXPECT_EQ(sets.weights[1][2], (std::array<float, 4>{0.125F, 0, 0, 0}));
    EXPECT_EQ(sets.weights[1][0], (std::array<float, 4>{0, 0, 0, 0}));
}

TEST_F(GltfWeights, InvalidWeightsAreDropped)
{
    Weigh(0, 1, -1);
    Weigh(0, 2, 2);
    Weigh(1, 3, std::numeric_limits<float>::quiet_NaN());
    Weigh(2, 3, std::numeric_limits<float>::infinity());
    const WeightSets sets = CollectWeights(mesh_).value();
    EXPECT_EQ(sets.joints[0][0], (std::array<std::uint16_t, 4>{2, 0, 0, 0}));
    EXPECT_EQ(sets.weights[0][0], (std::array<float, 4>{1, 0, 0, 0}));
    EXPECT_EQ(sets.weights[0][1], (std::array<float, 4>{1, 0, 0, 0}));
    EXPECT_EQ(sets.weights[0][2], (std::array<float, 4>{1, 0, 0, 0}));
}

}  // namespace

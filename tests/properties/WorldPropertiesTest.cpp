#include <importing/math/SameBits.h>
#include <models/SceneModels.h>
#include <properties/CompareForms.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace
{

using namespace Importing;
using Properties::CompareForms;
using Properties::Trials;
using Support::Dice;
using Support::RandomMatrix;
using Support::RandomScene;

Trials Crowded()
{
    Trials trials;
    trials.options.maxNodes = 40;
    trials.options.maxSurfaces = 40;
    return trials;
}

TEST(WorldProperties, CollisionOffsets)
{
    CompareForms(
        Crowded(), [](SceneContainer& scene, Dice&) { EXPECT_EQ(scene.CalculateSurfaceCollisionOffset(), 0); },
        [](SceneContainer& scene, Dice&) { Models::CalculateSurfaceCollisionOffset(scene); });
}

TEST(WorldProperties, CollisionOffsetsOfProjectedAndMissingMeshes)
{
    Trials trials = Crowded();
    trials.options.projections = true;
    CompareForms(
        trials, [](SceneContainer& scene, Dice&) { scene.CalculateSurfaceCollisionOffset(); },
        [](SceneContainer& scene, Dice&) { Models::CalculateSurfaceCollisionOffset(scene); });
    trials.options.missingMeshes = true;
    trials.options.maxNodes = 6;
    trials.options.maxSurfaces = 3;
    CompareForms(
        trials, [](SceneContainer& scene, Dice&) { scene.CalculateSurfaceCollisionOffset(); },
        [](SceneContainer& scene, Dice&) { Models::CalculateSurfaceCollisionOffset(scene); });
}

/// Gives meshes vertices that make their bounds inverted, infinite or NaN.
void SpoilMeshes(SceneContainer& scene, Dice& dice)
{
    static const float kOdd[] = {INFINITY, -INFINITY, NAN, 3e38F, -3e38F, -0.0F, 1e-45F};
    for (Geometry& mesh : scene.GeometryLibrary)
    {
        if (dice.OneIn(6))
            mesh.VertexArray.clear();
        for (Vertex& vertex : mesh.VertexArray)
            if (dice.OneIn(12))
            {
                const auto pick = [&] { return dice.OneIn(2) ? kOdd[dice.Below(7)] : 1.0F; };
                vertex.SetPosition(D3DXVECTOR3{pick(), pick(), pick()});
            }
    }
}

TEST(WorldProperties, CollisionOffsetsOfOddBoxes)
{
    CompareForms(
        Crowded(),
        [](SceneContainer& scene, Dice& dice) {
            SpoilMeshes(scene, dice);
            scene.CalculateSurfaceCollisionOffset();
        },
        [](SceneContainer& scene, Dice& dice) {
            SpoilMeshes(scene, dice);
            Models::CalculateSurfaceCollisionOffset(scene);
        });
}

TEST(WorldProperties, ResolveGeomInstances)
{
    Trials trials = Crowded();
    trials.options.missingMeshes = true;
    CompareForms(
        trials, [](SceneContainer& scene, Dice&) { EXPECT_EQ(scene.ResolveGeomInstances(), 0); },
        [](SceneContainer& scene, Dice&) { Models::ResolveGeomInstances(scene); });
}

/// Gives some surfaces mesh indices beyond the library, where copies may be appended.
void SpoilMeshIndices(SceneContainer& scene, Dice& dice)
{
    if (!dice.OneIn(3))
        return;
    for (Surface& surface : scene.SurfaceLibrary)
        if (dice.OneIn(6))
            surface.SetGeometryID(static_cast<int>(scene.GeometryLibrary.size()) + dice.Below(3));
}

TEST(WorldProperties, ResolveGeomInstancesWithBadMeshIndices)
{
    CompareForms(
        Crowded(),
        [](SceneContainer& scene, Dice& dice) {
            SpoilMeshIndices(scene, dice);
            scene.ResolveGeomInstances();
        },
        [](SceneContainer& scene, Dice& dice) {
            SpoilMeshIndices(scene, dice);
            Models::ResolveGeomInstances(scene);
        });
}

struct BoundsOutcome
{
    D3DXVECTOR3 min{5, 5, 5};
    D3DXVECTOR3 max{5, 5, 5};
    std::string exception;
};

template <typename GetBounds>
BoundsOutcome BoundsOf(GetBounds getBounds)
{
    BoundsOutcome outcome;
    try
    {
        getBounds(outcome.min, outcome.max);
    }
    catch (const std::out_of_range& exception)
    {
        outcome.exception = exception.what();
    }
    return outcome;
}

std::array<std::uint32_t, 3> BitsOf(const D3DXVECTOR3& vector)
{
    return std::bit_cast<std::array<std::uint32_t, 3>>(vector);
}

TEST(WorldProperties, BoundsOfTheScene)
{
    Trials trials = Crowded();
    trials.options.projections = true;
    for (std::uint32_t seed = 1; seed <= trials.count; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        trials.options.missingMeshes = seed % 8 == 0;
        Dice dice(seed);
        const SceneContainer scene = RandomScene(dice, trials.options);
        const Support::DerivedContainer derived(scene);
        const auto expected =
            BoundsOf([&](D3DXVECTOR3& min, D3DXVECTOR3& max) { Models::GetBoundingBox(scene, min, max); });
        const auto plain = BoundsOf([&](D3DXVECTOR3& min, D3DXVECTOR3& max) { scene.GetBoundingBox(min, max); });
        const auto literal = BoundsOf([&](D3DXVECTOR3& min, D3DXVECTOR3& max) { derived.GetBoundingBox(min, max); });
        ASSERT_EQ(plain.exception, expected.exception);
        ASSERT_EQ(literal.exception, expected.exception);
        if (!expected.exception.empty())
            continue;
        // Compared as numbers: which of two zeros is kept depends on the order of the corners, which is not specified.
        ASSERT_EQ(plain.min, expected.min);
        ASSERT_EQ(plain.max, expected.max);
        ASSERT_EQ(BitsOf(plain.min), BitsOf(literal.min));
        ASSERT_EQ(BitsOf(plain.max), BitsOf(literal.max));
    }
}

TEST(WorldProperties, WorldMatricesOfAllNodes)
{
    for (std::uint32_t seed = 1; seed <= 1000; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        SceneContainer scene = RandomScene(dice, Crowded().options);
        Support::DerivedContainer derived(scene);
        for (int node = 0; node < static_cast<int>(scene.NodeLibrary.size()); ++node)
        {
            const D3DXMATRIX expected = Models::GlobalMatrix(scene, node);
            ASSERT_TRUE(SameBits(scene.CalculateGlobalTM(node), expected)) << "node " << node;
            ASSERT_TRUE(SameBits(derived.CalculateGlobalTM(node), expected)) << "node " << node;
            ASSERT_EQ(scene.FindParentNode(node), Models::FindParent(scene, node));
        }
    }
}

Trials Mirrored()
{
    Trials trials;
    trials.count = 800;
    trials.options.largePolygons = true;
    trials.options.projections = true;
    return trials;
}

TEST(WorldProperties, CheckFacesOrientation)
{
    CompareForms(
        Mirrored(),
        [](SceneContainer& scene, Dice& dice) {
            const int node = dice.Index(scene.NodeLibrary.size());
            EXPECT_EQ(scene.CheckFacesOrientation(node, RandomMatrix(dice)), 0);
        },
        [](SceneContainer& scene, Dice& dice) {
            const int node = dice.Index(scene.NodeLibrary.size());
            Models::CheckFacesOrientation(scene, node, RandomMatrix(dice));
        });
}

TEST(WorldProperties, RemoveNegativeScaleMatricies)
{
    CompareForms(
        Mirrored(),
        [](SceneContainer& scene, Dice& dice) {
            const int node = dice.Index(scene.NodeLibrary.size());
            const D3DXMATRIX pending = RandomMatrix(dice);
            EXPECT_EQ(scene.RemoveNegativeScaleMatricies(node, pending, RandomMatrix(dice)), 0);
        },
        [](SceneContainer& scene, Dice& dice) {
            const int node = dice.Index(scene.NodeLibrary.size());
            const D3DXMATRIX pending = RandomMatrix(dice);
            Models::RemoveNegativeScaleMatricies(scene, node, pending, RandomMatrix(dice));
        });
}

}  // namespace

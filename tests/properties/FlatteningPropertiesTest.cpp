#include <models/SceneModels.h>
#include <properties/CompareForms.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace Importing;
using Properties::CompareForms;
using Properties::Trials;
using Support::Dice;
using Support::RandomMatrix;

struct FlatteningArguments
{
    FlatteningArguments(const SceneContainer& scene, Dice& dice)
        : target(dice.OneIn(2) && scene.GetRootNodeIndex() >= 0 ? scene.GetRootNodeIndex()
                                                                : dice.Index(scene.NodeLibrary.size())),
          start(dice.OneIn(2) ? target : dice.Index(scene.NodeLibrary.size())), targetMatrix(RandomMatrix(dice)),
          startMatrix(RandomMatrix(dice)), minSurfaces(dice.Between(-2, 3)),
          maxVertices(dice.OneIn(2) ? -1 : dice.Between(0, 60)), ignoreAnimation(dice.OneIn(2))
    {}

    int target;
    int start;
    D3DXMATRIX targetMatrix;
    D3DXMATRIX startMatrix;
    int minSurfaces;
    int maxVertices;
    bool ignoreAnimation;
};

void Flatten(SceneContainer& scene, Dice& dice)
{
    const FlatteningArguments a(scene, dice);
    EXPECT_EQ(scene.FlatHierarchy(a.target, a.targetMatrix, a.start, a.startMatrix, a.minSurfaces, a.maxVertices,
                                  a.ignoreAnimation),
              0);
}

void FlattenByModel(SceneContainer& scene, Dice& dice)
{
    const FlatteningArguments a(scene, dice);
    Models::FlatHierarchy(scene, {a.target, a.targetMatrix, a.ignoreAnimation, {}}, a.start, a.startMatrix,
                          a.minSurfaces, a.maxVertices);
}

TEST(FlatteningProperties, FlatHierarchy) { CompareForms({{}, 1000}, Flatten, FlattenByModel); }

TEST(FlatteningProperties, FlatHierarchyOfTrees)
{
    Trials trials;
    trials.options.secondReferences = false;
    trials.options.maxNodes = 40;
    trials.options.maxSurfaces = 30;
    CompareForms(trials, Flatten, FlattenByModel);
}

TEST(FlatteningProperties, FlatHierarchyWithSurfacesWithoutMeshAndLargePolygons)
{
    Trials trials;
    trials.options.missingMeshes = true;
    trials.options.largePolygons = true;
    trials.options.maxSurfaces = 3;
    CompareForms(trials, Flatten, FlattenByModel);
}

TEST(FlatteningProperties, FlatHierarchyInternalDoesNotErase)
{
    const auto writeQueue = [](SceneContainer& scene, const std::vector<std::uint32_t>& erased, int result) {
        scene.ReservedList = erased;
        scene.SetStatus(result);
    };
    CompareForms(
        {},
        [&](SceneContainer& scene, Dice& dice) {
            const FlatteningArguments a(scene, dice);
            std::vector<std::uint32_t> erased{99};
            const int result = scene.FlatHierarchyInternal(a.target, a.targetMatrix, a.start, a.startMatrix, erased,
                                                           a.ignoreAnimation);
            writeQueue(scene, erased, result);
        },
        [&](SceneContainer& scene, Dice& dice) {
            const FlatteningArguments a(scene, dice);
            Models::Flattening flattening{a.target, a.targetMatrix, a.ignoreAnimation, {99}};
            const int result = Models::FlatHierarchyInternal(scene, flattening, a.start, a.startMatrix);
            writeQueue(scene, flattening.erased, result);
        });
}

/// Flattens below the target only. From elsewhere a pass can result in a target that references an erased node.
void FlattenAgainAndAgain(SceneContainer& scene, Dice& dice, bool byModel)
{
    for (int pass = 0; pass < 4; ++pass)
    {
        FlatteningArguments a(scene, dice);
        a.start = a.target;
        if (byModel)
            Models::FlatHierarchy(scene, {a.target, a.targetMatrix, a.ignoreAnimation, {}}, a.start, a.startMatrix,
                                  a.minSurfaces, a.maxVertices);
        else
            scene.FlatHierarchy(a.target, a.targetMatrix, a.start, a.startMatrix, a.minSurfaces, a.maxVertices,
                                a.ignoreAnimation);
    }
}

TEST(FlatteningProperties, RepeatedPasses)
{
    Trials trials;
    trials.options.secondReferences = false;
    trials.options.sharedMeshes = false;
    trials.options.maxNodes = 30;
    trials.options.maxSurfaces = 30;
    CompareForms(
        trials, [](SceneContainer& scene, Dice& dice) { FlattenAgainAndAgain(scene, dice, false); },
        [](SceneContainer& scene, Dice& dice) { FlattenAgainAndAgain(scene, dice, true); });
}

struct MoveArguments
{
    MoveArguments(const SceneContainer& scene, Dice& dice)
        : to(dice.Index(scene.NodeLibrary.size())), from(dice.Index(scene.NodeLibrary.size())),
          matrix(RandomMatrix(dice))
    {}

    int to;
    int from;
    D3DXMATRIX matrix;
};

TEST(FlatteningProperties, MoveSurfacesCamerasAndLights)
{
    CompareForms(
        {},
        [](SceneContainer& scene, Dice& dice) {
            const MoveArguments a(scene, dice);
            EXPECT_EQ(scene.MoveSurfaces(a.to, a.from, a.matrix), 0);
            EXPECT_EQ(scene.MoveCameras(a.to, a.from, a.matrix), 0);
            EXPECT_EQ(scene.MoveLights(a.to, a.from, a.matrix), 0);
        },
        [](SceneContainer& scene, Dice& dice) {
            const MoveArguments a(scene, dice);
            Models::MoveSurfaces(scene, a.to, a.from, a.matrix);
            Models::MoveCameras(scene, a.to, a.from, a.matrix);
            Models::MoveLights(scene, a.to, a.from, a.matrix);
        });
}

/// Trials with one node and many references, for merging.
void GatherSurfaces(SceneContainer& scene, Dice& dice, bool mayRepeat)
{
    std::vector<std::int32_t>& list = scene.NodeLibrary[0].SurfaceList;
    list.clear();
    for (int i = 0; i < static_cast<int>(scene.SurfaceLibrary.size()); ++i)
        list.push_back(i);
    for (std::size_t i = list.size(); i > 1; --i)
        std::swap(list[i - 1], list[static_cast<std::size_t>(dice.Below(static_cast<int>(i)))]);
    if (mayRepeat && !list.empty() && dice.OneIn(4))
        list.push_back(list[0]);
}

Properties::Operation Merging(bool mayRepeat, bool byModel)
{
    return [=](SceneContainer& scene, Dice& dice) {
        GatherSurfaces(scene, dice, mayRepeat);
        const int minSurfaces = dice.Between(-2, 4);
        const int maxVertices = dice.OneIn(3) ? -1 : dice.Between(0, 80);
        if (byModel)
            Models::MergeSurfaces(scene, 0, minSurfaces, maxVertices);
        else
            EXPECT_EQ(scene.MergeSurfaces(0, minSurfaces, maxVertices), 0);
    };
}

TEST(FlatteningProperties, MergeSurfacesOfTheirOwnMeshes)
{
    Trials trials;
    trials.count = 1000;
    trials.options.maxNodes = 2;
    trials.options.sharedMeshes = false;
    trials.options.maxSurfaces = 40;
    CompareForms(trials, Merging(false, false), Merging(false, true));
}

TEST(FlatteningProperties, MergeSurfacesThatShareMeshesOrAreReferencedTwice)
{
    Trials trials;
    trials.count = 1000;
    trials.options.maxNodes = 2;
    CompareForms(trials, Merging(true, false), Merging(true, true));
}

TEST(FlatteningProperties, MergeSurfacesOfDifferentPolySizesOrWithoutMesh)
{
    Trials trials;
    trials.options.maxNodes = 2;
    trials.options.maxSurfaces = 6;
    trials.options.largePolygons = true;
    CompareForms(trials, Merging(true, false), Merging(true, true));
    trials.options.missingMeshes = true;
    trials.options.maxSurfaces = 4;
    CompareForms(trials, Merging(true, false), Merging(true, true));
}

TEST(FlatteningProperties, EraseNodeFromLibrary)
{
    CompareForms(
        {},
        [](SceneContainer& scene, Dice& dice) {
            for (int i = dice.Between(1, 5); i > 0 && !scene.NodeLibrary.empty(); --i)
                scene.EraseNodeFromLibrary(dice.Index(scene.NodeLibrary.size()));
        },
        [](SceneContainer& scene, Dice& dice) {
            for (int i = dice.Between(1, 5); i > 0 && !scene.NodeLibrary.empty(); --i)
                Models::EraseNode(scene, dice.Index(scene.NodeLibrary.size()));
        });
}

}  // namespace

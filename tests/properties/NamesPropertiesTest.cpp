#include <models/SceneModels.h>
#include <properties/CompareForms.h>

#include <gtest/gtest.h>

namespace
{

using namespace Importing;
using Properties::CompareForms;
using Properties::Trials;
using Support::Dice;

Trials ManyNames()
{
    Trials trials;
    trials.options.missingMeshes = true;
    trials.options.maxNodes = 30;
    trials.options.maxSurfaces = 30;
    return trials;
}

TEST(NamesProperties, NodeGeometryMaterialAndSurfaceNames)
{
    CompareForms(
        ManyNames(),
        [](SceneContainer& scene, Dice&) {
            EXPECT_EQ(scene.MakeNodeNamesUnambiguous(), 0);
            EXPECT_EQ(scene.MakeGeometryNamesUnambiguous(), 0);
            EXPECT_EQ(scene.MakeMaterialNamesUnambiguous(), 0);
            EXPECT_EQ(scene.MakeSurfaceNamesUnambiguous(), 0);
        },
        [](SceneContainer& scene, Dice&) {
            Models::MakeNamesUnambiguous(scene.NodeLibrary);
            Models::MakeNamesUnambiguous(scene.GeometryLibrary);
            Models::MakeNamesUnambiguous(scene.MaterialLibrary);
            Models::MakeNamesUnambiguous(scene.SurfaceLibrary);
        });
}

TEST(NamesProperties, CreatedSurfaceNamesMadeUnambiguous)
{
    CompareForms(
        ManyNames(),
        [](SceneContainer& scene, Dice&) {
            EXPECT_EQ(scene.CreateSurfaceNames(), 0);
            EXPECT_EQ(scene.MakeSurfaceNamesUnambiguous(), 0);
        },
        [](SceneContainer& scene, Dice&) {
            Models::CreateSurfaceNames(scene);
            Models::MakeNamesUnambiguous(scene.SurfaceLibrary);
        });
}

}  // namespace

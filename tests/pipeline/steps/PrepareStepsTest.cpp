#include <pipeline/steps/PrepareSteps.h>

#include <gtest/gtest.h>

namespace
{

using namespace Pipeline;
using Names = std::vector<std::string>;

TEST(PrepareSteps, WithoutAWishThereIsNothingToDo) { EXPECT_EQ(MakePipeline({}).StepNames(), Names{}); }

TEST(PrepareSteps, EverythingInItsOrder)
{
    const StepOptions options = {.resolveInstances = true,
                                 .repairMirrors = true,
                                 .checkOrientation = true,
                                 .fixCulling = true,
                                 .weld = true,
                                 .normals = true,
                                 .unifyNormals = true,
                                 .uvs = {{"cubic", 0, false}},
                                 .uniqueNames = true,
                                 .flatten = true,
                                 .surfaceNames = true,
                                 .collisionOffsets = true};
    EXPECT_EQ(MakePipeline(options).StepNames(), (Names{"Resolve instances",
                                                        "Repair mirrors",
                                                        "Check orientation",
                                                        "Fix culling",
                                                        "Forget normals",
                                                        "Weld",
                                                        "Compute normals",
                                                        "Unify normals",
                                                        "Generate cubic UVs, set 0",
                                                        "Make names unique",
                                                        "Drop skeleton nodes",
                                                        "Set skins aside",
                                                        "Anchor animated nodes",
                                                        "Turn mirrored faces",
                                                        "Flatten",
                                                        "Release anchors",
                                                        "Put skins back",
                                                        "Drop unreachable nodes",
                                                        "Name surfaces",
                                                        "Make surface names unique",
                                                        "Compute collision offsets"}));
}

TEST(PrepareSteps, StepsThatWorkMatricesIntoMeshesResolveInstances)
{
    EXPECT_TRUE(NeedsOwnMeshes({.resolveInstances = true}));
    EXPECT_TRUE(NeedsOwnMeshes({.repairMirrors = true}));
    EXPECT_TRUE(NeedsOwnMeshes({.checkOrientation = true}));
    EXPECT_TRUE(NeedsOwnMeshes({.flatten = true}));
    EXPECT_FALSE(NeedsOwnMeshes({.fixCulling = true,
                                 .weld = true,
                                 .normals = true,
                                 .unifyNormals = true,
                                 .uvs = {{"cubic", 0, false}},
                                 .uniqueNames = true,
                                 .surfaceNames = true,
                                 .collisionOffsets = true}));
    EXPECT_EQ(MakePipeline({.repairMirrors = true}).StepNames(), (Names{"Resolve instances", "Repair mirrors"}));
}

TEST(PrepareSteps, TheRecommendedRoadKeepsThePictureAndTheArtistsData)
{
    StepOptions options = {.minSurfaces = 5};
    ChooseRecommended(options);
    EXPECT_EQ(MakePipeline(options).StepNames(),
              (Names{"Resolve instances", "Repair mirrors", "Weld", "Make names unique", "Drop skeleton nodes",
                     "Set skins aside", "Anchor animated nodes", "Turn mirrored faces", "Flatten", "Release anchors",
                     "Put skins back", "Drop unreachable nodes", "Name surfaces", "Make surface names unique",
                     "Compute collision offsets"}));
    EXPECT_EQ(options.minSurfaces, 5);
}

}  // namespace

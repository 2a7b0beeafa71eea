#include <sceneprep/model/SkinPlacement.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using Importing::SceneContainer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

Bone BoneAt(const SceneContainer& scene, const std::string& node)
{
    return {node, Support::Translation(0, 0, 0), Support::NodeIndex(scene, node)};
}

TEST(SkinPlacement, SurfacesWithTheSameJointTransformsShareAMesh)
{
    SceneContainer scene = Support::Scene("Root( Hip A[a=m] B@1,0,0[b=m] C@1,0,0[c=m] )");
    SkinPlacement placement(scene);
    const std::vector<Bone> bones = {BoneAt(scene, "Hip")};
    for (int surface = 0; surface < 3; ++surface)
        placement.Place(surface, 2 + surface, bones);
    EXPECT_THAT(placement.Copies(), ElementsAre(Pair(1, 0)));
    EXPECT_EQ(Support::SurfaceNamed(scene, "b").GetGeometryID(), 1);
    EXPECT_EQ(Support::SurfaceNamed(scene, "c").GetGeometryID(), 1);
    EXPECT_EQ(scene.GeometryLibrary.at(1).JointArray.at(0).GetLocalTM()._41, -1);
    EXPECT_THAT(placement.StillNodes(), IsEmpty());
    Notes notes;
    placement.AddNotes(notes);
    EXPECT_TRUE(notes.Empty());
}

TEST(SkinPlacement, ASurfaceAtAnAnimatedNodeMovesToANodeWithoutAnimation)
{
    SceneContainer scene = Support::Scene("Root( Hip M@3,0,0*[m n] )");
    SkinPlacement placement(scene);
    const std::vector<Bone> bones = {BoneAt(scene, "Hip")};
    placement.Place(0, 2, bones);
    placement.Place(1, 2, bones);
    EXPECT_EQ(Support::ToText(scene), "Root( Hip M* M (skin)[m n] )");
    EXPECT_THAT(placement.StillNodes(), ElementsAre(Pair(3, 2)));
    Notes notes;
    placement.AddNotes(notes);
    ASSERT_EQ(notes.All().size(), 1U);
    EXPECT_THAT(notes.All()[0].text, StartsWith("skinned meshes at animated nodes are moved"));
    EXPECT_EQ(notes.All()[0].loss, "");
}

}  // namespace

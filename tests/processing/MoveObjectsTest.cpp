#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::Scene;
using Support::ToText;
using Support::Translation;

TEST(MoveSurfaces, AppendsTheSurfacesAndBakesTheMatrixIntoTheirMeshes)
{
    SceneContainer scene = Scene("To[a] | From[b c]");
    EXPECT_EQ(scene.MoveSurfaces(0, 1, Translation(10, 0, 0)), 0);
    EXPECT_EQ(ToText(scene), "To[a b c] | From");
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(1, 1, 1));
    EXPECT_EQ(Support::Low(MeshOf(scene, "b")), D3DXVECTOR3(11, 1, 1));
    EXPECT_EQ(Support::Low(MeshOf(scene, "c")), D3DXVECTOR3(11, 1, 1));
}

TEST(MoveSurfaces, AMeshThatTwoSurfacesShareIsTransformedTwice)
{
    SceneContainer scene = Scene("To | From[a=mesh b=mesh]");
    scene.MoveSurfaces(0, 1, Translation(10, 0, 0));
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(21, 1, 1));
}

TEST(MoveSurfaces, ASurfaceReferencedTwiceIsTransformedTwice)
{
    SceneContainer scene = Scene("To | From[a a]");
    scene.MoveSurfaces(0, 1, Translation(10, 0, 0));
    EXPECT_EQ(ToText(scene), "To[a a] | From");
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(21, 1, 1));
}

TEST(MoveSurfaces, TheIdentityKeepsTheHashOfAMesh)
{
    SceneContainer scene = Scene("To | From[a]");
    MeshOf(scene, "a").GetHash();
    scene.MoveSurfaces(0, 1, Transform::Indentity);
    EXPECT_TRUE(MeshOf(scene, "a").GetIsHashCodeValid());
    scene.MoveSurfaces(1, 0, Translation(1, 0, 0));
    EXPECT_FALSE(MeshOf(scene, "a").GetIsHashCodeValid());
}

TEST(MoveCameras, TheOffsetIsMultipliedFromTheRight)
{
    SceneContainer scene = Scene("To{a} | From{b}");
    scene.CameraLibrary[1].SetOffsetMatrix(Transform(Translation(1, 0, 0)));
    EXPECT_EQ(scene.MoveCameras(0, 1, Support::Scaling(2, 2, 2)), 0);
    EXPECT_EQ(ToText(scene), "To{a b} | From");
    const D3DXMATRIX offset = scene.CameraLibrary[1].GetOffsetMatrix().GetMatrix();
    EXPECT_EQ(offset._41, 2);  // In the other order it would be 1.
    EXPECT_EQ(offset._11, 2);
    EXPECT_EQ(scene.CameraLibrary[0].GetOffsetMatrix().GetMatrix()._11, 1);
}

TEST(MoveLights, TheOffsetIsMultipliedFromTheRight)
{
    SceneContainer scene = Scene("To<a> | From<b>");
    scene.LightLibrary[1].SetOffsetMatrix(Transform(Translation(1, 0, 0)));
    EXPECT_EQ(scene.MoveLights(0, 1, Support::Scaling(2, 2, 2)), 0);
    EXPECT_EQ(ToText(scene), "To<a b> | From");
    EXPECT_EQ(scene.LightLibrary[1].GetOffsetMatrix().GetMatrix()._41, 2);
}

TEST(MoveCamerasAndLights, AnOffsetBecomesAMatrixAndLosesItsHashEvenUnderTheIdentity)
{
    SceneContainer scene = Scene("To | From{eye}<sun>");
    D3DXVECTOR3 translation(1, 2, 3);
    Transform euler;
    euler.SetEuler(translation, D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1));
    scene.CameraLibrary[0].SetOffsetMatrix(euler);
    scene.LightLibrary[0].SetOffsetMatrix(euler);
    scene.CameraLibrary[0].GetHash();
    scene.LightLibrary[0].GetHash();
    scene.MoveCameras(0, 1, Transform::Indentity);
    scene.MoveLights(0, 1, Transform::Indentity);
    EXPECT_EQ(scene.CameraLibrary[0].GetOffsetMatrix().GetType(), Transform::Type::Matrix);
    EXPECT_EQ(scene.LightLibrary[0].GetOffsetMatrix().GetType(), Transform::Type::Matrix);
    EXPECT_EQ(scene.CameraLibrary[0].GetOffsetMatrix().GetMatrix()._42, 2);
    EXPECT_FALSE(scene.CameraLibrary[0].GetIsHashCodeValid());
    EXPECT_FALSE(scene.LightLibrary[0].GetIsHashCodeValid());
}

TEST(MoveObjects, ANodeWithEmptyListsChangesNothing)
{
    SceneContainer scene = Scene("To[a]{eye}<sun> | From");
    const SceneContainer before(scene);
    EXPECT_EQ(scene.MoveSurfaces(0, 1, Translation(1, 1, 1)), 0);
    EXPECT_EQ(scene.MoveCameras(0, 1, Translation(1, 1, 1)), 0);
    EXPECT_EQ(scene.MoveLights(0, 1, Translation(1, 1, 1)), 0);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

template <typename Container>
void ExpectEqualNodesToChangeNothing()
{
    const SceneContainer before = Scene("Root( Node[a b]{eye}<sun> )");
    Container scene(before);
    EXPECT_EQ(scene.MoveSurfaces(1, 1, Translation(1, 1, 1)), 0);
    EXPECT_EQ(scene.MoveCameras(1, 1, Translation(1, 1, 1)), 0);
    EXPECT_EQ(scene.MoveLights(1, 1, Translation(1, 1, 1)), 0);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(MoveObjects, EqualNodesChangeNothing)
{
    ExpectEqualNodesToChangeNothing<SceneContainer>();
    ExpectEqualNodesToChangeNothing<Support::DerivedContainer>();
}

template <typename Container>
void ExpectBadIndicesToChangeNothing()
{
    using Move = int (SceneContainer::*)(int, int, const D3DXMATRIX&);
    const SceneContainer good = Scene("To[a]{eye}<sun> | From[b c]{e2 e3}<s2 s3>");
    for (const Move move : {&SceneContainer::MoveSurfaces, &SceneContainer::MoveCameras, &SceneContainer::MoveLights})
    {
        Container scene(good);
        for (const int node : {-1, 2})
        {
            Support::ExpectBadIndex(scene, [&] { (scene.*move)(node, 1, Translation(1, 0, 0)); });
            Support::ExpectBadIndex(scene, [&] { (scene.*move)(0, node, Translation(1, 0, 0)); });
        }
        // The last entry is bad, so the entries before it must not move either.
        Node& from = scene.NodeLibrary[1];
        for (std::vector<std::int32_t>* list : {&from.SurfaceList, &from.CameraList, &from.LightList})
            list->push_back(99);
        Support::ExpectBadIndex(scene, [&] { (scene.*move)(0, 1, Translation(1, 0, 0)); });
    }
    Container scene(good);
    scene.SurfaceLibrary[2].SetGeometryID(-1);
    Support::ExpectBadIndex(scene, [&] { scene.MoveSurfaces(0, 1, Translation(1, 0, 0)); });
}

TEST(MoveObjects, ABadIndexChangesNothing)
{
    ExpectBadIndicesToChangeNothing<SceneContainer>();
    ExpectBadIndicesToChangeNothing<Support::DerivedContainer>();
}

}  // namespace

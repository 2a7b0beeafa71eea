#include <pipeline/scene/CheckScene.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <stdexcept>

namespace
{

using Importing::SceneContainer;
using Pipeline::CheckScene;

TEST(CheckScene, AcceptsATreeWithoutOptionalReferences)
{
    SceneContainer scene = Support::Scene("Root( A[a]{eye}<sun> ) | Lost");
    scene.SurfaceLibrary[0].SetMaterialID(-1);
    scene.SurfaceLibrary.emplace_back();
    EXPECT_NO_THROW(CheckScene(scene));
    EXPECT_NO_THROW(CheckScene(SceneContainer{}));
}

TEST(CheckScene, RefusesEveryBadIndex)
{
    const auto expectRefused = [](void (*spoil)(SceneContainer&)) {
        SceneContainer scene = Support::Scene("Root( A[a]{eye}<sun> )");
        spoil(scene);
        EXPECT_THROW(CheckScene(scene), std::out_of_range);
    };
    expectRefused([](SceneContainer& scene) { scene.SetRootNodeIndex(2); });
    expectRefused([](SceneContainer& scene) { scene.NodeLibrary[1].ChildList = {2}; });
    expectRefused([](SceneContainer& scene) { scene.NodeLibrary[1].ChildList = {-1}; });
    expectRefused([](SceneContainer& scene) { scene.NodeLibrary[1].SurfaceList = {1}; });
    expectRefused([](SceneContainer& scene) { scene.NodeLibrary[1].CameraList = {1}; });
    expectRefused([](SceneContainer& scene) { scene.NodeLibrary[1].LightList = {1}; });
    expectRefused([](SceneContainer& scene) { scene.SurfaceLibrary[0].SetGeometryID(1); });
    expectRefused([](SceneContainer& scene) { scene.SurfaceLibrary[0].SetMaterialID(-2); });
    expectRefused([](SceneContainer& scene) { scene.GeometryLibrary[0].IndexArray[0] = 8; });
}

TEST(CheckScene, RefusesCyclesAndSecondParents)
{
    SceneContainer cycle = Support::Scene("Root( A( B ) )");
    cycle.NodeLibrary[2].ChildList = {1};
    EXPECT_THROW(CheckScene(cycle), std::runtime_error);
    SceneContainer shared = Support::Scene("Root( A( B ) C )");
    shared.NodeLibrary[3].ChildList = {2};
    EXPECT_THROW(CheckScene(shared), std::runtime_error);
}

}  // namespace

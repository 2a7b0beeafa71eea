#include <importing/plugin/SceneContainer.h>

#include <brindle/Brindle.h>
#include <records/CountedAllocations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Importing;
using Support::CountedAllocations;
using Support::SameScene;

/// Returns a scene with at least one record in every library.
SceneContainer Filled()
{
    SceneContainer scene;
    scene.AnimationLibrary = {std::vector<Key>(2), std::vector<Key>(1)};
    scene.CameraLibrary.resize(1);
    scene.CameraLibrary[0].SetName("camera");
    scene.LightLibrary.resize(2);
    scene.LightLibrary[1].SetName("light");
    scene.GeometryLibrary.resize(1);
    scene.GeometryLibrary[0].VertexArray.assign(3, Vertex(1, 2, 3));
    scene.GeometryLibrary[0].VertexArray[1].AddWeight(1, 0.5F);
    scene.GeometryLibrary[0].IndexArray = {0, 1, 2};
    scene.GeometryLibrary[0].GetHash();
    scene.ReservedList = {7, 8, 9};
    scene.TextureLibrary = {"a texture name longer than fifteen characters"};
    scene.MaterialLibrary.resize(2);
    scene.MaterialLibrary[0].SetOpacity(0.5F);
    scene.NodeLibrary.resize(3);
    scene.NodeLibrary[0].ChildList = {1, 2};
    scene.NodeLibrary[1].SurfaceList = {0};
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(0);
    scene.SurfaceLibrary[0].MapList.resize(2);
    scene.SetStatus(5);
    scene.SetName("a scene name longer than fifteen characters");
    scene.SetRootNodeIndex(0);
    return scene;
}

void ExpectEmptyLibraries(const SceneContainer& scene)
{
    EXPECT_TRUE(scene.AnimationLibrary.empty());
    EXPECT_TRUE(scene.CameraLibrary.empty());
    EXPECT_TRUE(scene.LightLibrary.empty());
    EXPECT_TRUE(scene.GeometryLibrary.empty());
    EXPECT_TRUE(scene.ReservedList.empty());
    EXPECT_TRUE(scene.TextureLibrary.empty());
    EXPECT_TRUE(scene.MaterialLibrary.empty());
    EXPECT_TRUE(scene.NodeLibrary.empty());
    EXPECT_TRUE(scene.SurfaceLibrary.empty());
}

TEST(SceneContainer, NewContainerIsEmpty)
{
    SceneContainer scene;
    ExpectEmptyLibraries(scene);
    EXPECT_EQ(scene.GetStatus(), -1);
    EXPECT_EQ(scene.GetName(), "");
    EXPECT_EQ(scene.GetRootNodeIndex(), -1);
}

TEST(SceneContainer, ChannelNameIsNotTheScenesName)
{
    SceneContainer scene;
    EXPECT_STREQ(scene.GetChannelName(), "SceneContainer");
    scene.SetName("scene");
    EXPECT_STREQ(scene.GetChannelName(), "SceneContainer");
    scene.SetChannelName("channel");
    EXPECT_EQ(scene.GetName(), "scene");
}

TEST(SceneContainer, StatusNameAndRootAreStoredWithoutChecks)
{
    SceneContainer scene;
    for (const int value : {0, 7, -1, -99, 2147483647})
    {
        scene.SetStatus(value);
        scene.SetRootNodeIndex(value);
        EXPECT_EQ(scene.GetStatus(), value);
        EXPECT_EQ(scene.GetRootNodeIndex(), value) << "the index is not checked";
    }
    scene.SetName("name");
    EXPECT_EQ(scene.GetName(), "name");
}

// --- Clear -------------------------------------------------------------------------------------------------------

TEST(SceneContainer, ClearEmptiesAFilledContainer)
{
    SceneContainer scene = Filled();
    scene.Clear();
    ExpectEmptyLibraries(scene);
    EXPECT_EQ(scene.GetStatus(), -1);
    EXPECT_EQ(scene.GetName(), "");
    EXPECT_EQ(scene.GetRootNodeIndex(), -1);
    Geometry geometry;
    EXPECT_EQ(scene.AddGeometryToLibrary(geometry, false), 0);
}

TEST(SceneContainer, ClearKeepsTheCapacityOfTheLibraries)
{
    SceneContainer scene = Filled();
    scene.Clear();
    EXPECT_GE(scene.AnimationLibrary.capacity(), 2U);
    EXPECT_GE(scene.CameraLibrary.capacity(), 1U);
    EXPECT_GE(scene.LightLibrary.capacity(), 2U);
    EXPECT_GE(scene.GeometryLibrary.capacity(), 1U);
    EXPECT_GE(scene.ReservedList.capacity(), 3U);
    EXPECT_GE(scene.TextureLibrary.capacity(), 1U);
    EXPECT_GE(scene.MaterialLibrary.capacity(), 2U);
    EXPECT_GE(scene.NodeLibrary.capacity(), 3U);
    EXPECT_GE(scene.SurfaceLibrary.capacity(), 1U);
}

TEST(SceneContainer, ClearKeepsTheChannelName)
{
    SceneContainer scene;
    scene.SetChannelName("channel");
    scene.Clear();
    EXPECT_STREQ(scene.GetChannelName(), "channel");
}

TEST(SceneContainer, ClearSetsStatusAndNameThroughTheVirtualTableAndTheRootDirectly)
{
    Support::RecordingContainer scene;
    scene.Forget();
    scene.Clear();
    EXPECT_EQ(scene.Calls({"Clear", "SetStatus", "SetRootNodeIndex", "SetName"}),
              "Clear() SetStatus(-1) SetName(\"\")");
}

/// Records the libraries when Clear() sets the status.
class CuriousContainer : public SceneContainer
{
public:
    bool wasEmpty = false;
    int rootThen = 0;

    void SetStatus(int status) override
    {
        wasEmpty = NodeLibrary.empty() && SurfaceLibrary.empty();
        SceneContainer::SetStatus(status);
    }
    void SetName(const std::string& name) override
    {
        rootThen = GetRootNodeIndex();
        SceneContainer::SetName(name);
    }
};

TEST(SceneContainer, ClearEmptiesFirstAndResetsTheRootBeforeTheName)
{
    CuriousContainer scene;
    scene.NodeLibrary.resize(2);
    scene.SetRootNodeIndex(1);
    scene.Clear();
    EXPECT_TRUE(scene.wasEmpty);
    EXPECT_EQ(scene.rootThen, -1);
}

// --- Copies ------------------------------------------------------------------------------------------------------

TEST(SceneContainer, CopiesHaveEveryField)
{
    SceneContainer scene = Filled();
    scene.SetChannelName("channel");
    scene.SetTimeStamp();
    SceneContainer copy(scene);
    SceneContainer assigned;
    assigned.TextureLibrary.assign(5, "old");
    EXPECT_EQ(&(assigned = scene), &assigned);
    for (SceneContainer* other : {&copy, &assigned})
    {
        EXPECT_TRUE(SameScene(*other, scene));
        EXPECT_EQ(other->ReservedList, (std::vector<std::uint32_t>{7, 8, 9}));
        EXPECT_STREQ(other->GetChannelName(), "channel");
        EXPECT_EQ(other->GetTimeStamp(), scene.GetTimeStamp());
    }
}

TEST(SceneContainer, CopiesAreDeep)
{
    const SceneContainer scene = Filled();
    SceneContainer copy(scene);
    copy.AnimationLibrary[0][1].SetTime(9);
    copy.CameraLibrary[0].SetName("changed");
    copy.LightLibrary[1].SetName("changed");
    copy.GeometryLibrary[0].VertexArray[1].SetWeight(9, 9, 0);
    copy.ReservedList[0] = 99;
    copy.TextureLibrary[0] = "changed";
    copy.MaterialLibrary[0].SetName("changed");
    copy.NodeLibrary[0].ChildList.clear();
    copy.SurfaceLibrary[0].MapList[1].SetAmount(0);
    copy.SetStatus(6);
    copy.SetName("changed");
    copy.SetRootNodeIndex(2);
    EXPECT_TRUE(SameScene(scene, Filled()));
}

TEST(SceneContainer, SelfAssignmentChangesNothing)
{
    SceneContainer scene = Filled();
    SceneContainer& same = scene;
    scene = same;
    EXPECT_TRUE(SameScene(scene, Filled()));
}

TEST(SceneContainer, AssignmentOfAnEmptyContainerEmpties)
{
    SceneContainer scene = Filled();
    scene = SceneContainer();
    ExpectEmptyLibraries(scene);
    EXPECT_EQ(scene.GetStatus(), -1);
    EXPECT_EQ(scene.GetRootNodeIndex(), -1);
}

#if !defined(_WIN32)  // On Windows the library does not use the operator new of the program.

TEST(SceneContainer, CopyThatFailsAnywhereLeaksNothing)
{
    const SceneContainer scene = Filled();
    const std::size_t before = CountedAllocations::InUse();
    std::size_t failures = 0;
    for (bool isDone = false; !isDone; ++failures)
    {
        CountedAllocations::FailAfter(failures);
        try
        {
            const SceneContainer copy(scene);  // NOLINT(performance-unnecessary-copy-initialization)
            isDone = true;
        }
        catch (const std::bad_alloc&)
        {
            ASSERT_EQ(CountedAllocations::InUse(), before) << "after " << failures << " allocations";
        }
        CountedAllocations::Recover();
        ASSERT_LT(failures, 1000U);
    }
    EXPECT_GT(failures, 9U) << "every library has failed once";
    EXPECT_EQ(CountedAllocations::InUse(), before);
}

TEST(SceneContainer, AdditionThatFailsDoesNotChangeTheLibrary)
{
    SceneContainer scene = Filled();
    const SceneContainer untouched(scene);
    Geometry geometry = scene.GeometryLibrary[0];
    Material material;
    material.SetName("a material name longer than fifteen characters");
    const std::string texture = "another texture name longer than fifteen characters";
    const std::vector<std::pair<const char*, std::function<void()>>> additions = {
        {"geometry", [&] { scene.AddGeometryToLibrary(geometry, false); }},
        {"new geometry", [&] { scene.CreateNewGeometryInLibrary(); }},
        {"material", [&] { scene.AddMaterialToLibrary(material, false); }},
        {"texture", [&] { scene.AddTextureToLibrary(texture, false); }},
        {"animation", [&] { scene.AddAnimationToLibrary(std::vector<Key>(3), false); }},
        {"surface", [&] { scene.AddSurfaceToLibrary(untouched.SurfaceLibrary[0], false); }}};
    for (const auto& [name, add] : additions)
    {
        for (std::size_t failures = 0;; ++failures)
        {
            scene = untouched;
            scene.GeometryLibrary.shrink_to_fit();
            scene.MaterialLibrary.shrink_to_fit();
            CountedAllocations::FailAfter(failures);
            bool isDone = true;
            try
            {
                add();
            }
            catch (const std::bad_alloc&)
            {
                isDone = false;
            }
            CountedAllocations::Recover();
            if (isDone)
                break;
            EXPECT_TRUE(SameScene(scene, untouched)) << name << ", " << failures;
        }
    }
}

#endif

// --- The host's operations ---------------------------------------------------------------------------------------

TEST(SceneContainer, SavedAndLoadedSceneIsEmpty)
{
    SceneContainer scene = Filled();
    scene.SetChannelName("my channel");
    VykFileSaver saver;
    EXPECT_TRUE(scene.SaveChannel(saver));

    SceneContainer loaded;
    VykFileLoader loader(saver.GetBytes());
    EXPECT_TRUE(loaded.LoadChannel(loader, nullptr));
    EXPECT_TRUE(SameScene(loaded, SceneContainer()));
    EXPECT_STREQ(loaded.GetChannelName(), "my channel") << "the name is saved by the host's base class";
}

TEST(SceneContainer, LoadingKeepsTheScene)
{
    VykFileSaver saver;
    SceneContainer().SaveChannel(saver);
    SceneContainer scene = Filled();
    VykFileLoader loader(saver.GetBytes());
    EXPECT_TRUE(scene.LoadChannel(loader, nullptr));
    EXPECT_TRUE(SameScene(scene, Filled()));
}

TEST(SceneContainer, SavesTheSameBytesAsTheBaseClass)
{
    Vyk_Channel base;
    base.SetChannelName("SceneContainer");
    VykFileSaver expected;
    base.SaveChannel(expected);
    VykFileSaver saver;
    Filled().SaveChannel(saver);
    EXPECT_EQ(saver.GetBytes(), expected.GetBytes());
}

TEST(SceneContainer, LoadReportsTheFailureOfTheBaseClass)
{
    SceneContainer scene = Filled();
    VykFileLoader loader(std::vector<unsigned char>{1, 2});
    EXPECT_FALSE(scene.LoadChannel(loader, nullptr));
    EXPECT_TRUE(SameScene(scene, Filled()));
}

TEST(SceneContainer, CallChannelAndDoDependencyInitDoNothing)
{
    SceneContainer scene = Filled();
    scene.CallChannel();
    scene.DoDependencyInit(nullptr);
    EXPECT_TRUE(SameScene(scene, Filled()));
}

TEST(SceneContainer, TypeThroughTheVirtualTableIsThatOfTheBaseClass)
{
    SceneContainer scene;
    EXPECT_STREQ(scene.GetChannelType().name.data(), "");
}

TEST(SceneContainer, IsDestroyedThroughTheHostsBaseClass)
{
    const std::unique_ptr<Vyk_Channel> channel = std::make_unique<SceneContainer>(Filled());
    EXPECT_STREQ(channel->GetChannelName(), "SceneContainer");
}

}  // namespace

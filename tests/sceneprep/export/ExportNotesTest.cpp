#include <sceneprep/export/ExportNotes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using Importing::Map;
using Importing::SceneContainer;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> LossesOf(SceneContainer& scene, const char* file)
{
    return NotesOnExport(scene, *FindWriteFormat(file)).LossesExcept({});
}

/// A scene with every kind of content that at least one format lacks.
SceneContainer FullScene()
{
    SceneContainer scene = Support::Scene("Root( A*[a=m:c]{eye}<sun> )");
    for (Importing::Vertex& vertex : scene.GeometryLibrary[0].VertexArray)
    {
        vertex.SetTexCoord({0, 0}, 0);
        vertex.SetTexCoord({0, 0}, 1);
    }
    Map map;
    map.SetTextureID(scene.AddTextureToLibrary("wood.png", true));
    map.SetMatrix(Support::Scaling(2, 2, 1));
    scene.SurfaceLibrary[0].MapList.push_back(map);
    scene.GeometryLibrary[0].JointArray.resize(1);
    return scene;
}

TEST(ExportNotes, AreEmptyIfTheFormatHoldsEverything)
{
    SceneContainer scene = FullScene();
    EXPECT_THAT(LossesOf(scene, "a.glb"), IsEmpty());
    SceneContainer plain = Support::Scene("Root[a]");
    for (const WriteFormat& format : ListWriteFormats())
        EXPECT_TRUE(NotesOnExport(plain, format).Empty()) << format.extension;
}

TEST(ExportNotes, NameEveryKindOfContentThatTheFormatDoesNotHold)
{
    SceneContainer scene = FullScene();
    EXPECT_THAT(LossesOf(scene, "a.obj"),
                ElementsAre("cameras", "lights", "animations", "skins", "texture-transforms", "further-uvs"));
    EXPECT_THAT(LossesOf(scene, "a.stl"),
                ElementsAre("cameras", "lights", "animations", "skins", "materials", "textures", "uvs"));
    EXPECT_THAT(LossesOf(scene, "a.dae"), ElementsAre("texture-transforms"));
    EXPECT_EQ(NotesOnExport(scene, *FindWriteFormat("a.dae")).All().front().text,
              "COLLADA does not hold texture transforms");
}

TEST(ExportNotes, NameOnlyContentOfTheScene)
{
    SceneContainer scene = Support::Scene("Root[a=m:c]{eye}");
    EXPECT_THAT(LossesOf(scene, "a.ply"), ElementsAre("cameras", "materials"));
    EXPECT_THAT(LossesOf(scene, "a.fbx"), ElementsAre("cameras"));
}

TEST(ExportNotes, NameTheHierarchyIfNodesHaveShear)
{
    SceneContainer scene = Support::Scene("Root( A[a] )");
    D3DXMATRIX shear = Support::Scaling(1, 1, 1);
    shear._21 = 1;
    Support::NodeNamed(scene, "A").SetLocalTransform(shear);
    EXPECT_THAT(LossesOf(scene, "a.fbx"), ElementsAre("hierarchy"));
    EXPECT_THAT(LossesOf(scene, "a.dae"), IsEmpty());
}

}  // namespace

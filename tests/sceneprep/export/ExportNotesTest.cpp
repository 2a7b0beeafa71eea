#include <sceneprep/export/ExportNotes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using Importing::Map;
using Importing::SceneContainer;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::string> Notes(SceneContainer& scene, const char* file)
{
    return NotesOnExport(scene, *FindWriteFormat(file));
}

/// With everything that some format lacks.
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

TEST(ExportNotes, WhatTheFormatHoldsIsNotToldOf)
{
    SceneContainer scene = FullScene();
    EXPECT_THAT(Notes(scene, "a.glb"), IsEmpty());
    SceneContainer plain = Support::Scene("Root[a]");
    for (const WriteFormat& format : ListWriteFormats())
        EXPECT_THAT(NotesOnExport(plain, format), IsEmpty()) << format.extension;
}

TEST(ExportNotes, WhatItLacksIsToldInOneLine)
{
    SceneContainer scene = FullScene();
    EXPECT_THAT(Notes(scene, "a.obj"),
                ElementsAre("left out, since Wavefront OBJ format as it is written here holds none: cameras, lights, "
                            "movements, skins, placements of textures, further sets of texture coordinates"));
    EXPECT_THAT(Notes(scene, "a.stl"),
                ElementsAre(EndsWith(": cameras, lights, movements, skins, materials, textures, texture coordinates")));
    EXPECT_THAT(Notes(scene, "a.dae"), ElementsAre(EndsWith(": placements of textures")));
}

TEST(ExportNotes, OnlyWhatTheSceneHoldsIsToldOf)
{
    SceneContainer scene = Support::Scene("Root[a=m:c]{eye}");
    EXPECT_THAT(Notes(scene, "a.ply"), ElementsAre(EndsWith(": cameras, materials")));
    EXPECT_THAT(Notes(scene, "a.fbx"), ElementsAre(EndsWith(": cameras")));
}

TEST(ExportNotes, AHierarchyThatIsGivenUpIsToldOf)
{
    SceneContainer scene = Support::Scene("Root( A[a] )");
    D3DXMATRIX shear = Support::Scaling(1, 1, 1);
    shear._21 = 1;
    Support::NodeNamed(scene, "A").SetLocalTransform(shear);
    EXPECT_THAT(Notes(scene, "a.fbx"), ElementsAre(AllOf(StartsWith("the hierarchy"), HasSubstr("nodes shear"))));
    EXPECT_THAT(Notes(scene, "a.dae"), IsEmpty());
}

}  // namespace

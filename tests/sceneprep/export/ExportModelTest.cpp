#include <sceneprep/export/ExportModel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/SceneStats.h>
#include <sceneprep/FileSizeLimit.h>
#include <sceneprep/Models.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/run/Error.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;
using testing::HasSubstr;

class ExportModelTest : public testing::Test
{
protected:
    std::vector<std::string> Export(const SceneContainer& scene, const std::string& name)
    {
        Model model = ModelOf(scene);
        return TextsOf(ExportModel(model, folder_ / name, progress_, state_));
    }

    SceneContainer Reimport(const std::string& name)
    {
        Model model;
        ImportModel(folder_ / name, model, progress_);
        return *model.scene;
    }

    std::string ExportError(const std::filesystem::path& file)
    {
        try
        {
            Model model = ModelOf(Support::Scene("Root[a]"));
            ExportModel(model, file, progress_, state_);
        }
        catch (const ToolError& error)
        {
            return error.what();
        }
        return "no error";
    }

    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
    WorkState state_;
};

/// Formats that can be read back, with and without a hierarchy.
class RoundTripTest : public ExportModelTest, public testing::WithParamInterface<const char*>
{};

TEST_P(RoundTripTest, TheAppearanceRoundTrips)
{
    SceneContainer scene = Support::Scene("Root@1,2,3( A@4,0,0( B[a=m:c d=n:e] ) C[b=m:c] )");
    Support::NodeNamed(scene, "C").SetLocalTransform(Support::Scaling(-2, 1, 1));
    Support::NodeNamed(scene, "A").SetLocalTransform(Support::Scaling(1, -1, -3));
    Export(scene, GetParam());
    SceneContainer back = Reimport(GetParam());
    ExpectSameWorld(Measure(back), Measure(scene));
}

TEST_P(RoundTripTest, ShearRoundTrips)
{
    SceneContainer scene = Support::Scene("Root( A@4,0,0( B[a] ) )");
    D3DXMATRIX shear = Support::Scaling(1, 2, -1);
    shear._21 = 0.75F;
    Support::NodeNamed(scene, "B").SetLocalTransform(shear);
    Export(scene, GetParam());
    SceneContainer back = Reimport(GetParam());
    ExpectSameWorld(Measure(back), Measure(scene));
}

/// Characters with a meaning in at least one format.
const std::vector<std::string> kHostileNames = {"a \"b\" c", "it's", "<&>", "a\\", "#a",  "a\nb", "\r\n",
                                                "a\x01\tb",  "::",   "*1",  " a ", "{;}", "]]>",  "%20"};

TEST_P(RoundTripTest, NamesDoNotBreakTheFile)
{
    SceneContainer plain = Support::Scene("Root( A[a=m:c] B[b=n:d] )");
    plain.MaterialLibrary[0].SetOpacity(0.5F);
    Export(plain, GetParam());
    SceneContainer plainBack = Reimport(GetParam());
    const std::size_t materials = CountScene(plainBack).materials;
    for (const std::string& name : kHostileNames)
    {
        SceneContainer scene = Support::Scene("Root( A[a=m:c] B[b=n:d] )");
        scene.MaterialLibrary[0].SetOpacity(0.5F);
        scene.MaterialLibrary[0].SetName(name);
        Support::NodeNamed(scene, "A").SetName(name);
        Support::MeshOf(scene, "a").SetName(name);
        scene.SurfaceLibrary[0].SetName(name);
        Export(scene, GetParam());
        SceneContainer back = Reimport(GetParam());
        ExpectSameWorld(Measure(back), Measure(scene));
        EXPECT_EQ(CountScene(back).materials, materials) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, RoundTripTest,
                         testing::Values("out.3ds", "out.3mf", "out.assbin", "out.dae", "out.fbx", "out.glb",
                                         "out.gltf", "out.obj", "out.ply", "out.stl", "out.x", "out.x3d"),
                         [](const auto& format) { return std::string(format.param).substr(4); });

/// Every format that can be written.
class EveryFormatTest : public ExportModelTest, public testing::WithParamInterface<std::string>
{};

TEST_P(EveryFormatTest, AFullDiskIsAnErrorAndNothingIsWritten)
{
    const std::string name = "out." + GetParam();
    SceneContainer scene = Support::Scene("Root[a]");
    Export(scene, name);
    const std::uintmax_t size = std::filesystem::file_size(folder_ / name);
    const TemporaryFolder full;
    for (std::uintmax_t limit = size / 8; limit < size; limit += size / 8)
    {
        const FileSizeLimit fullDisk(limit);
        EXPECT_EQ(ExportError(full / name),
                  "cannot write " + name + ": is the disk full? Make room or choose another folder");
        EXPECT_EQ(full.CountEntries(), 0U) << limit;
    }
}

std::vector<std::string> AllExtensions()
{
    std::vector<std::string> extensions;
    for (const WriteFormat& format : ListWriteFormats())
        extensions.push_back(format.extension);
    return extensions;
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormatTest, testing::ValuesIn(AllExtensions()),
                         [](const auto& format) { return format.param; });

TEST_F(ExportModelTest, NamesDoNotBreakTextFiles)
{
    for (const std::string& name : kHostileNames)
    {
        SceneContainer scene = Support::Scene("Root[a=m:c]");
        scene.MaterialLibrary[0].SetName(name);
        Support::NodeNamed(scene, "Root").SetName(name);
        Support::MeshOf(scene, "a").SetName(name);
        Export(scene, "out.json");
        EXPECT_TRUE(nlohmann::json::accept(ReadText(folder_ / "out.json"))) << name;
    }
}

TEST_F(ExportModelTest, SharedMeshesStaySharedInGltf)
{
    SceneContainer scene = Support::Scene("Root( A[a=m:c] X[x=n:c] B[b=m:c] C[d=m:c] Y[y=n:c] )");
    Export(scene, "out.glb");
    SceneContainer back = Reimport("out.glb");
    EXPECT_EQ(CountScene(back).geometries, 2U);
    EXPECT_EQ(Measure(back).triangles, 60U);
}

TEST_F(ExportModelTest, MeshesWithoutSharedVerticesAreWritten)
{
    SceneContainer scene = Support::Scene("Root[a]");
    scene.GeometryLibrary[0].IndexArray.resize(3);
    for (const char* name : {"out.obj", "out.stl", "out.ply", "out.glb"})
    {
        Export(scene, name);
        SceneContainer back = Reimport(name);
        EXPECT_EQ(CountScene(back).triangles, 1U) << name;
    }
}

TEST_F(ExportModelTest, NormalsUVsAndMaterialsRoundTrip)
{
    Model model;
    ImportModel(WriteSmallObj(folder_), model, progress_);
    for (Importing::Geometry& geometry : model.scene->GeometryLibrary)
        geometry.ComputeNormals();
    Export(*model.scene, "out.glb");
    SceneContainer back = Reimport("out.glb");
    ASSERT_EQ(CountScene(back).materials, 2U);
    EXPECT_EQ(back.MaterialLibrary[0].GetName(), "Red");
    EXPECT_EQ(back.MaterialLibrary[0].GetOpacity(), 0.5F);
    EXPECT_NEAR(back.MaterialLibrary[0].GetSpecularPower(), 32, 1e-3F);
    EXPECT_EQ(back.TextureLibrary, (std::vector<std::string>{"wood.png"}));
    for (Importing::Geometry& geometry : back.GeometryLibrary)
    {
        for (Importing::Vertex& vertex : geometry.VertexArray)
        {
            EXPECT_EQ(vertex.GetTexCoordCount(), 1U);
            EXPECT_EQ(vertex.GetNormal(), D3DXVECTOR3(0, 0, 1));
        }
    }
}

TEST_F(ExportModelTest, CamerasAndLightsRoundTripThroughCollada)
{
    SceneContainer scene = Support::Scene("Root( A[a] B{eye}@1,2,3 C<sun> )");
    scene.CameraLibrary[0].SetFovX(60);
    scene.CameraLibrary[0].SetFovY(45);
    scene.CameraLibrary[0].SetNearZ(0.5F);
    scene.CameraLibrary[0].SetFarZ(50);
    scene.LightLibrary[0].SetType(Importing::Light::LightType::Point);
    EXPECT_TRUE(Export(scene, "out.dae").empty());
    SceneContainer back = Reimport("out.dae");
    ASSERT_EQ(back.CameraLibrary.size(), 1U);
    EXPECT_NEAR(back.CameraLibrary[0].GetFovX(), 60, 1e-3F);
    EXPECT_EQ(back.CameraLibrary[0].GetFarZ(), 50);
    ASSERT_EQ(back.LightLibrary.size(), 1U);
    EXPECT_EQ(back.LightLibrary[0].GetType(), Importing::Light::LightType::Point);
}

TEST_F(ExportModelTest, AnimationsRoundTripThroughGltf)
{
    SceneContainer scene = Support::Scene("Root( A*[a] )");
    scene.AnimationLibrary[0].resize(2);
    scene.AnimationLibrary[0][1].SetTime(4800);
    scene.AnimationLibrary[0][1].SetPosition({1, 2, 3});
    Export(scene, "out.glb");
    SceneContainer back = Reimport("out.glb");
    const int animation = Support::NodeNamed(back, "A").GetAnimationID();
    ASSERT_EQ(animation, 0);
    ASSERT_EQ(back.AnimationLibrary[0].size(), 2U);
    EXPECT_EQ(back.AnimationLibrary[0][1].GetTime(), 4800U);
    EXPECT_EQ(back.AnimationLibrary[0][1].GetPosition(), D3DXVECTOR3(1, 2, 3));
}

TEST_F(ExportModelTest, ObjKeepsMaterialsOfOneNameApart)
{
    SceneContainer scene = Support::Scene("Root( A[a=m:c] B[b=n:d] )");
    scene.MaterialLibrary[1].SetName(scene.MaterialLibrary[0].GetName());
    scene.MaterialLibrary[1].SetDiffuse({1, 0, 0, 1});
    Export(scene, "out.obj");
    SceneContainer back = Reimport("out.obj");
    EXPECT_EQ(CountScene(back).materials, 2U);
}

TEST_F(ExportModelTest, ReportsContentThatTheFormatDoesNotHold)
{
    SceneContainer scene = Support::Scene("Root[a]{eye}");
    const auto notes = Export(scene, "out.ply");
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_THAT(notes[0], testing::EndsWith("does not hold cameras"));
}

TEST_F(ExportModelTest, GltfKeepsCameras)
{
    SceneContainer scene = Support::Scene("Root[a]{eye}");
    EXPECT_TRUE(Export(scene, "out.glb").empty());
    EXPECT_EQ(Reimport("out.glb").CameraLibrary.size(), 1U);
}

TEST_F(ExportModelTest, EmbeddedImagesAreWrittenNextToFilesThatCannotHoldThem)
{
    SceneContainer scene = Support::Scene("Root[a=m:c]");
    Importing::Map map;
    map.SetType("diffuse");
    map.SetTextureID(scene.AddTextureToLibrary("*0", true));
    scene.SurfaceLibrary[0].MapList.push_back(map);
    Model model = ModelOf(scene);
    model.textures.embedded = {{.formatHint = "png", .content = {0x89, 'P', 'N', 'G', 1}}};
    ExportModel(model, folder_ / "out.obj", progress_, state_);
    EXPECT_THAT(ReadText(folder_ / "out.mtl"), HasSubstr("map_Kd out-image0.png\n"));
    EXPECT_EQ(std::filesystem::file_size(folder_ / "out-image0.png"), 5U);
    ExportModel(model, folder_ / "solid.stl", progress_, state_);
    EXPECT_EQ(folder_.CountEntries(), 4U);  // one more: the format has no textures
}

TEST_F(ExportModelTest, CompanionFilesAreWrittenAndNothingElseRemains)
{
    SceneContainer scene = Support::Scene("Root[a]");
    Export(scene, "out.gltf");
    EXPECT_EQ(folder_.CountEntries(), 2U);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out.bin"));
    EXPECT_THAT(ReadText(folder_ / "out.gltf"), HasSubstr("\"out.bin\""));
}

TEST_F(ExportModelTest, ReplacesAnExistingFile)
{
    folder_.Write("out.glb", "old");
    SceneContainer scene = Support::Scene("Root[a]");
    Export(scene, "out.glb");
    EXPECT_EQ(folder_.CountEntries(), 1U);
    EXPECT_EQ(ReadText(folder_ / "out.glb").substr(0, 4), "glTF");
}

TEST_F(ExportModelTest, ReportsFilesThatCannotBeWrittenInOneLine)
{
    const std::string unknown = (folder_ / "out.zzz").string();
    EXPECT_EQ(ExportError(unknown),
              "cannot write " + unknown +
                  ": unsupported file extension '.zzz'; 'sceneprep formats' lists the supported ones");
    const std::string nowhere = (folder_ / "no/out.glb").string();
    EXPECT_EQ(ExportError(nowhere),
              "cannot write " + nowhere + ": there is no folder " + (folder_ / "no").string() + "; create it first");
    std::filesystem::create_directory(folder_ / "dir.glb");
    const std::string folder = (folder_ / "dir.glb").string();
    EXPECT_EQ(ExportError(folder), "cannot write " + folder + ": it is a folder; name a file");
    EXPECT_EQ(folder_.CountEntries(), 1U);
}

TEST_F(ExportModelTest, AFailureKeepsTheExistingFile)
{
    folder_.Write("out.glb", "old");
    SceneContainer scene = Support::Scene("Root[a]");
    scene.GeometryLibrary[0].IndexArray[0] = 1000;
    EXPECT_THROW(Export(scene, "out.glb"), std::out_of_range);
    EXPECT_EQ(ReadText(folder_ / "out.glb"), "old");
    EXPECT_EQ(folder_.CountEntries(), 1U);
}

}  // namespace

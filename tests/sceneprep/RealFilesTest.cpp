#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/PrepareScene.h>
#include <sceneprep/Models.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/AppendModel.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/report/Proof.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <regex>
#include <sstream>

// Tests with model files: the bundled ones, and those of a further folder if there is one.

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;
using std::filesystem::path;

bool IsModel(const path& file)
{
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    static const std::vector<std::string> kExtensions = {".glb", ".gltf", ".obj", ".dae",
                                                         ".fbx", ".ply",  ".stl", ".3ds"};
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

std::vector<path> FindModels()
{
    std::vector<path> models;
    for (const path folder : {SCENEPREP_EXAMPLES, SCENEPREP_REAL_SCENES})
    {
        if (!std::filesystem::is_directory(folder))
            continue;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
        {
            if (IsModel(entry.path()))
                models.push_back(entry.path());
        }
    }
    std::sort(models.begin(), models.end());
    return models;
}

std::string TestName(const testing::TestParamInfo<path>& info)
{
    std::string name = info.param.filename().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

std::size_t CountIn(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

std::size_t CountFaces(const nlohmann::json& listing)
{
    std::size_t count = 0;
    for (const nlohmann::json& mesh : listing["meshes"])
        count += mesh["faces"].size();
    return count;
}

/// Assimp cannot read the textures of the X3D files that it writes.
std::string WithoutTextures(const std::string& x3d)
{
    return std::regex_replace(x3d, std::regex("<ImageTexture[^>]*>"), "");
}

class RealFilesTest : public testing::TestWithParam<path>
{
protected:
    SceneContainer Import(const path& file)
    {
        Model model;
        ImportModel(file, model, progress_);
        return std::move(*model.scene);
    }

    void Run(SceneContainer& scene, const PrepareOptions& options) { PrepareScene(scene, options); }

    /// Runs the steps on the file, and compares the result as the program does.
    void ExpectNoDifferenceAfter(const PrepareOptions& options)
    {
        SceneContainer scene = Import(GetParam());
        const WorldMeasure before = Measure(scene);
        Run(scene, options);
        EXPECT_THAT(FindDifferences(before, Measure(scene), false), testing::IsEmpty());
        ExpectSameWorld(Measure(scene), before);
    }

    void ExpectSameAfterExport(SceneContainer& scene, const std::string& name)
    {
        SCOPED_TRACE(name);
        Model model = ModelOf(scene);
        ExportModel(model, folder_ / name, progress_, state_);
        SceneContainer back = Import(folder_ / name);
        ExpectSameWorld(Measure(back), Measure(scene));
    }

    /// Files that Assimp writes but cannot read are only searched for their triangles.
    void ExpectHeldByFile(Model& model, const WriteFormat& format)
    {
        SceneContainer& scene = *model.scene;
        SCOPED_TRACE(format.extension);
        const path file = folder_ / ("out." + format.extension);
        ExportModel(model, file, progress_, state_);
        if (format.extension == "x3d")
            folder_.Write("out.x3d", WithoutTextures(ReadText(file)));
        if (format.extension == "stp")
            EXPECT_EQ(CountIn(ReadText(file), "=STYLED_ITEM("), Measure(scene).triangles);
        else if (format.extension == "assxml")
            EXPECT_EQ(CountIn(ReadText(file), "<Face num=\"3\">"), CountScene(scene).triangles);
        else if (format.extension == "json")
            EXPECT_EQ(CountFaces(nlohmann::json::parse(ReadText(file))), CountScene(scene).triangles);
        else
        {
            SceneContainer back = Import(file);
            ExpectSameWorld(Measure(back), Measure(scene));
        }
    }

    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
    WorkState state_;
};

TEST_P(RealFilesTest, ResolvedInstancesKeepTheAppearance)
{
    SceneContainer scene = Import(GetParam());
    EXPECT_GT(Measure(scene).triangles, 0U);
    ExpectNoDifferenceAfter({.resolveInstances = true});
}

TEST_P(RealFilesTest, RepairedMirrorsKeepTheAppearance)
{
    ExpectNoDifferenceAfter({.repairMirrors = true});
    SceneContainer scene = Import(GetParam());
    Run(scene, {.repairMirrors = true});
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<bool> mirrored = FindMirroredNodes(scene, walk);
    if (scene.AnimationLibrary.empty())
    {
        EXPECT_EQ(std::count(mirrored.begin(), mirrored.end(), true), 0);
    }
}

TEST_P(RealFilesTest, WeldingKeepsTheAppearance) { ExpectNoDifferenceAfter({.weld = true}); }

TEST_P(RealFilesTest, NormalsUVsNamesAndOffsetsKeepTheAppearance)
{
    ExpectNoDifferenceAfter({.weld = true,
                             .normals = true,
                             .unifyNormals = true,
                             .uvs = {{"cubic", 0, false}, {"planar-x", 1, true}},
                             .uniqueNames = true,
                             .surfaceNames = true,
                             .collisionOffsets = true});
}

TEST_P(RealFilesTest, FlippedFacesKeepBoundsAndArea)
{
    SceneContainer scene = Import(GetParam());
    const WorldMeasure before = Measure(scene);
    Run(scene, {.checkOrientation = true, .fixCulling = true});
    EXPECT_THAT(FindDifferences(before, Measure(scene), true), testing::IsEmpty());
}

TEST_P(RealFilesTest, FlatteningKeepsTheAppearance) { ExpectNoDifferenceAfter({.flatten = true}); }

TEST_P(RealFilesTest, FlatteningAnimatedNodesKeepsOnlyRootAndSkins)
{
    SceneContainer scene = Import(GetParam());
    Run(scene, {.resolveInstances = true});
    const SceneStats before = CountScene(scene);
    const std::size_t skinned = ListSkinnedMeshes(scene, WalkFromRoot(scene)).size();
    Run(scene, {.flatten = true, .ignoreAnimation = true});
    EXPECT_LE(scene.NodeLibrary.size(), 1 + skinned);
    EXPECT_LE(CountScene(scene).surfaces, before.surfaces);
    EXPECT_EQ(CountScene(scene).vertices, before.vertices);
    ExpectNoDifferenceAfter({.flatten = true, .ignoreAnimation = true});
}

TEST_P(RealFilesTest, TheRecommendedStepsKeepTheAppearance)
{
    PrepareOptions options = RecommendedSteps();
    ExpectNoDifferenceAfter(options);
    options.ignoreAnimation = true;
    ExpectNoDifferenceAfter(options);
}

TEST_P(RealFilesTest, ExportAndImportKeepTheAppearance)
{
    SceneContainer scene = Import(GetParam());
    ExpectSameAfterExport(scene, "out.glb");
    ExpectSameAfterExport(scene, "out.obj");
}

TEST_P(RealFilesTest, EveryFormatKeepsTheAppearance)
{
    Model model;
    ImportModel(GetParam(), model, progress_);
    for (const WriteFormat& format : ListWriteFormats())
        ExpectHeldByFile(model, format);
}

TEST_P(RealFilesTest, ExportAndImportKeepThePreparedAppearance)
{
    SceneContainer scene = Import(GetParam());
    PrepareOptions options = RecommendedSteps();
    options.ignoreAnimation = true;
    Run(scene, options);
    ExpectSameAfterExport(scene, "out.glb");
    ExpectSameAfterExport(scene, "out.obj");
    ExpectSameAfterExport(scene, "out.ply");
}

TEST_P(RealFilesTest, AppendingTheSameFileDoublesTheTriangles)
{
    Model model = ModelOf(Import(GetParam()));
    model.file = GetParam();
    const WorldMeasure before = Measure(*model.scene);
    Model other = ModelOf(Import(GetParam()));
    other.file = GetParam();
    AppendModel(model, std::move(other));
    const WorldMeasure after = Measure(*model.scene);
    EXPECT_EQ(after.triangles, 2 * before.triangles);
    EXPECT_EQ(after.min, before.min);
    EXPECT_EQ(after.max, before.max);
    EXPECT_NEAR(after.area, 2 * before.area, 1e-9 * before.area);
}

INSTANTIATE_TEST_SUITE_P(Models, RealFilesTest, testing::ValuesIn(FindModels()), TestName);

}  // namespace

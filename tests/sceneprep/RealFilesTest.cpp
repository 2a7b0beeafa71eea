#include <gtest/gtest.h>
#include <sceneprep/ExportModel.h>
#include <sceneprep/FlattenSteps.h>
#include <sceneprep/Formats.h>
#include <sceneprep/ImportModel.h>
#include <sceneprep/SceneStats.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/WorldMeasure.h>

#include <algorithm>
#include <sstream>

// Model files as they come: the bundled ones, and those of a further folder where there is one.

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;
using std::filesystem::path;

bool IsModel(const path& file)
{
    std::string ending = file.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
    static const std::vector<std::string> kEndings = {".glb", ".gltf", ".obj", ".dae", ".fbx", ".ply", ".stl", ".3ds"};
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
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

class RealFilesTest : public testing::TestWithParam<path>
{
protected:
    SceneContainer Import(const path& file, bool separateGeometries)
    {
        SceneContainer scene;
        ImportModel(file, {.separateGeometries = separateGeometries}, scene, progress_);
        return scene;
    }

    void Flatten(SceneContainer& scene, bool ignoreAnimation)
    {
        Pipeline pipeline;
        AddFlattenSteps(pipeline, {.minSurfaces = 2, .maxVertices = -1, .ignoreAnimation = ignoreAnimation});
        pipeline.Run(scene, progress_);
    }

    void ExpectSameAfterExport(SceneContainer& scene, const std::string& name)
    {
        SCOPED_TRACE(name);
        ExportModel(scene, {}, folder_ / name, progress_);
        SceneContainer back = Import(folder_ / name, false);
        ExpectSameWorld(Measure(back), Measure(scene));
    }

    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
};

TEST_P(RealFilesTest, SeparateGeometriesShowTheSameWorld)
{
    SceneContainer shared = Import(GetParam(), false);
    SceneContainer separate = Import(GetParam(), true);
    EXPECT_GT(Measure(shared).triangles, 0U);
    ExpectSameWorld(Measure(separate), Measure(shared));
}

TEST_P(RealFilesTest, FlatteningKeepsTheWorld)
{
    SceneContainer scene = Import(GetParam(), true);
    const WorldMeasure before = Measure(scene);
    Flatten(scene, false);
    ExpectSameWorld(Measure(scene), before);
}

TEST_P(RealFilesTest, FlatteningWithoutRegardToAnimationLeavesTheRoot)
{
    SceneContainer scene = Import(GetParam(), true);
    const WorldMeasure before = Measure(scene);
    const SceneStats statsBefore = CountScene(scene);
    Flatten(scene, true);
    ExpectSameWorld(Measure(scene), before);
    EXPECT_EQ(scene.NodeLibrary.size(), 1U);
    EXPECT_LE(CountScene(scene).surfaces, statsBefore.surfaces);
    EXPECT_EQ(CountScene(scene).vertices, statsBefore.vertices);
}

TEST_P(RealFilesTest, ExportAndImportKeepTheWorld)
{
    SceneContainer scene = Import(GetParam(), false);
    ExpectSameAfterExport(scene, "out.glb");
    ExpectSameAfterExport(scene, "out.obj");
}

TEST_P(RealFilesTest, ExportAndImportKeepTheFlattenedWorld)
{
    SceneContainer scene = Import(GetParam(), true);
    Flatten(scene, true);
    ExpectSameAfterExport(scene, "out.glb");
    ExpectSameAfterExport(scene, "out.obj");
}

INSTANTIATE_TEST_SUITE_P(Models, RealFilesTest, testing::ValuesIn(FindModels()), TestName);

}  // namespace

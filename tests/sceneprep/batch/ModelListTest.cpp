#include <sceneprep/batch/ModelList.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

#include <set>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Batch;
using namespace SceneprepTests;

using Paths = std::vector<std::filesystem::path>;

TEST(ModelList, FindsModelsBelowTheFolderInOrder)
{
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "sub/deep");
    std::filesystem::create_directories(folder / "out.obj");
    for (const char* name : {"b.OBJ", "a.obj", "a.mtl", "obj", "sub/deep/c.fbx", "out.obj/d.obj"})
        folder.Write(name, "");
    EXPECT_EQ(FindModels(folder.Path(), folder / "out.obj", {"fbx", "obj"}),
              (Paths{"a.obj", "b.OBJ", "sub/deep/c.fbx"}));
    EXPECT_EQ(FindModels(folder.Path(), folder / "elsewhere", {"fbx"}), (Paths{"sub/deep/c.fbx"}));
    EXPECT_EQ(FindModels(folder.Path(), folder / "elsewhere", {"dae"}), Paths());
}

TEST(ModelList, AFolderThatCannotBeSearchedIsAnError)
{
    const TemporaryFolder folder;
    EXPECT_THROW(FindModels(folder / "absent", folder / "out", {"obj"}), ToolError);
    EXPECT_THROW(FindModels(folder.Write("file", ""), folder / "out", {"obj"}), ToolError);
}

TEST(ModelList, OutputsHaveTheNamesOfTheirModels)
{
    EXPECT_EQ(NameOutputs({"a.obj", "sub/b.c.fbx"}, "glb"),
              (std::vector<ModelFile>{{"a.obj", "a.glb"}, {"sub/b.c.fbx", "sub/b.c.glb"}}));
}

TEST(ModelList, EqualOutputsGetTheExtensionsOfTheirModels)
{
    EXPECT_EQ(NameOutputs({"a.fbx", "a.obj", "b.obj", "sub/a.obj"}, "gltf"),
              (std::vector<ModelFile>{
                  {"a.fbx", "a.fbx.gltf"}, {"a.obj", "a.obj.gltf"}, {"b.obj", "b.gltf"}, {"sub/a.obj", "sub/a.gltf"}}));
}

TEST(ModelList, OutputsAreDistinctInEveryCase)
{
    std::set<std::filesystem::path> outputs;
    const Paths inputs = {"A.obj", "a.fbx", "a.obj.fbx", "a.obj.glb", "a.fbx.dae"};
    for (const ModelFile& file : NameOutputs(inputs, "glb"))
        EXPECT_TRUE(outputs.insert(file.output).second) << file.output;
}

}  // namespace

#include <sceneprep/import/ModelSource.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;

ModelSource Read(const std::filesystem::path& file)
{
    std::ostringstream out;
    Progress progress(out, false);
    return ModelSource(file, progress);
}

TEST(ModelSource, HoldsTheFileAsItIs)
{
    const TemporaryFolder folder;
    const std::filesystem::path file = WriteSmallObj(folder);
    const ModelSource source = Read(file);
    EXPECT_EQ(source.File(), file);
    ASSERT_EQ(source.Scene().mNumMeshes, 3U);
    EXPECT_EQ(source.Scene().mMeshes[0]->mNumFaces, 2U) << "the quad is two triangles";
}

TEST(ModelSource, OfAReleasedMeshTheNumbersRemain)
{
    const TemporaryFolder folder;
    ModelSource source = Read(WriteSmallObj(folder));
    const aiMesh& mesh = *source.Scene().mMeshes[0];
    const unsigned vertices = mesh.mNumVertices;
    source.Release(0);
    source.Release(0);  // nothing is left to free
    EXPECT_EQ(mesh.mNumVertices, vertices);
    EXPECT_EQ(mesh.mVertices, nullptr);
    EXPECT_EQ(mesh.mTextureCoords[0], nullptr);
    EXPECT_EQ(mesh.mFaces, nullptr);
    EXPECT_NE(source.Scene().mMeshes[1]->mVertices, nullptr) << "other meshes are left alone";
}

TEST(ModelSource, AFileThatCannotBeReadIsAnError)
{
    const TemporaryFolder folder;
    EXPECT_THROW(Read(folder.Write("broken.gltf", "{")), ToolError);
    EXPECT_THROW(Read(folder / "absent.gltf"), ToolError);
}

}  // namespace

#include <sceneprep/import/ModelSource.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
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

std::string ErrorOf(const std::filesystem::path& file)
{
    try
    {
        Read(file);
    }
    catch (const ToolError& error)
    {
        return error.what();
    }
    return "no error";
}

TEST(ModelSource, NamesEmptyAndTruncatedFiles)
{
    const TemporaryFolder folder;
    const std::string empty = folder.Write("empty.obj", "").string();
    EXPECT_EQ(ErrorOf(empty), "cannot read " + empty + ": the file is empty; export it again");
    const std::string stl =
        folder.Write("part.stl", std::string(80, 'x') + std::string("\x02\0\0\0", 4) + "y").string();
    EXPECT_EQ(ErrorOf(stl),
              "cannot read " + stl + ": the file is truncated (184 bytes expected, 85 found); copy or export it again");
}

TEST(ModelSource, NamesContentsThatNoReaderAccepts)
{
    const TemporaryFolder folder;
    const std::string other = folder.Write("model.xml", "<no><model/></no>").string();
    EXPECT_EQ(ErrorOf(other), "cannot read " + other +
                                  ": its contents are not those of a '.xml' file; it is damaged or truncated, or has "
                                  "the wrong extension");
}

TEST(ModelSource, RecordsTheFilesThatItOpens)
{
    const TemporaryFolder folder;
    const std::filesystem::path file = WriteSmallObj(folder);
    const std::vector<std::filesystem::path> opened = Read(file).OpenedFiles();
    EXPECT_NE(std::find(opened.begin(), opened.end(), file), opened.end());
    const bool hasLibrary = std::any_of(opened.begin(), opened.end(), [&](const std::filesystem::path& path) {
        return path.lexically_normal() == folder / "small.mtl";
    });
    EXPECT_TRUE(hasLibrary);
}

}  // namespace

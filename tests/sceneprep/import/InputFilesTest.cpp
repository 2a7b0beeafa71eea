#include <sceneprep/import/InputFiles.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

using Paths = std::vector<std::filesystem::path>;

Paths FilesOfModel(const std::filesystem::path& file)
{
    std::ostringstream out;
    Progress progress(out, false);
    return FilesOf(OpenModel(file, progress));
}

TEST(InputFiles, ListsBuffersAndImagesOfGltf)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "sub");
    const Paths expected = {folder.Write("a.gltf", R"({"asset":{"version":"2.0"},
            "buffers":[{"uri":"b 1.bin","byteLength":1},{"uri":"data:;base64,AAAA","byteLength":3},{"byteLength":3}],
            "images":[{"uri":"sub/wood%25.png"},{"uri":"absent.png"},{"uri":"sub/../b%201.bin"},{"bufferView":0}]})"),
                            folder.Write("b 1.bin", "x"), folder.Write("sub/wood%.png", "yy")};
    EXPECT_EQ(FilesOfModel(expected[0]), expected);
}

TEST(InputFiles, ListsMaterialLibrariesAndTexturesOfOtherFormats)
{
    const TemporaryFolder folder;
    const std::filesystem::path model = WriteSmallObj(folder);
    EXPECT_EQ(FilesOfModel(model), (Paths{model, folder / "small.mtl"}));
    folder.Write("Wood.PNG", "image");
    EXPECT_EQ(FilesOfModel(model), (Paths{model, folder / "small.mtl", folder / "Wood.PNG"}));
}

TEST(InputFiles, SizesAreAdded)
{
    const TemporaryFolder folder;
    EXPECT_EQ(BytesOf({folder.Write("a", "12345"), folder.Write("b", "123"), folder / "absent"}), 8U);
    EXPECT_EQ(BytesOf({}), 0U);
}

}  // namespace

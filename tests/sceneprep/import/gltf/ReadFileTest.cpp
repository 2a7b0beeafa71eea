#include <sceneprep/import/gltf/ReadFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::ThrowsMessage;

TEST(ReadFile, GivesTheBytes)
{
    const TemporaryFolder folder;
    EXPECT_THAT(ReadFile(folder.Write("a.bin", "xyz")), ElementsAre('x', 'y', 'z'));
    EXPECT_THAT(ReadFile(folder.Write("b.bin", "")), testing::IsEmpty());
}

TEST(ReadFile, NamesTheReasonOfAProblem)
{
    const TemporaryFolder folder;
    EXPECT_THAT([&] { ReadFile(folder / "a.bin"); }, ThrowsMessage<FormatError>("there is no such file"));
    EXPECT_THAT([&] { ReadFile(folder.Path()); }, ThrowsMessage<FormatError>("it is not a regular file"));
    EXPECT_THAT([&] { ReadFile("/dev/zero"); }, ThrowsMessage<FormatError>("it is not a regular file"));
}

}  // namespace

#include <sceneprep/export/CheckedFiles.h>

#include <gtest/gtest.h>
#include <sceneprep/FileSizeLimit.h>
#include <sceneprep/TestFiles.h>

#include <string>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

class CheckedFilesTest : public testing::Test
{
protected:
    void Write(const std::string& text)
    {
        Assimp::IOStream* stream = files_.Open((folder_ / "a").c_str(), "wb");
        ASSERT_NE(stream, nullptr);
        stream->Write(text.data(), 1, text.size());
        files_.Close(stream);
    }

    TemporaryFolder folder_;
    CheckedFiles files_;
};

TEST_F(CheckedFilesTest, WritesReadsAndSeeks)
{
    Write("0123456789");
    Assimp::IOStream* stream = files_.Open((folder_ / "a").c_str());
    ASSERT_NE(stream, nullptr);
    std::string text(3, ' ');
    EXPECT_EQ(stream->FileSize(), 10U);
    EXPECT_EQ(stream->Seek(4, aiOrigin_SET), aiReturn_SUCCESS);
    EXPECT_EQ(stream->Read(text.data(), 1, 3), 3U);
    EXPECT_EQ(text, "456");
    EXPECT_EQ(stream->Tell(), 7U);
    EXPECT_EQ(stream->FileSize(), 10U);
    EXPECT_EQ(stream->Tell(), 7U);
    files_.Close(stream);
    EXPECT_FALSE(files_.HasFailed());
}

TEST_F(CheckedFilesTest, AFileThatCannotBeOpenedGivesNoStream)
{
    EXPECT_EQ(files_.Open((folder_ / "none/a").c_str(), "wb"), nullptr);
    EXPECT_FALSE(files_.HasFailed());
}

TEST_F(CheckedFilesTest, RemembersAFailureToClose)
{
    const FileSizeLimit limit(4);
    Write("01234");
    EXPECT_TRUE(files_.HasFailed());
}

TEST_F(CheckedFilesTest, RemembersAFailedWrite)
{
    const FileSizeLimit limit(100);
    Write(std::string(1000000, 'a'));
    EXPECT_TRUE(files_.HasFailed());
}

TEST_F(CheckedFilesTest, An3mfArchiveEndsWithTheNumberOfItsParts)
{
    using namespace std::string_literals;
    const std::string end = "PK\5\6\0\0\0\0\3\0\3\0\1\1\1\1\2\2\2\2\0\0"s;
    EXPECT_TRUE(IsWhole3mf(folder_.Write("whole.3mf", "parts" + end)));
    EXPECT_FALSE(IsWhole3mf(folder_.Write("short.3mf", "parts" + end.substr(0, 21))));
    EXPECT_FALSE(IsWhole3mf(folder_.Write("empty.3mf", "")));
    EXPECT_FALSE(IsWhole3mf(folder_.Write("two.3mf", "PK\5\6\0\0\0\0\2\0\2\0\1\1\1\1\2\2\2\2\0\0"s)));
}

}  // namespace

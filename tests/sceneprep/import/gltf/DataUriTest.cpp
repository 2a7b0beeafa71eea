#include <sceneprep/import/gltf/DataUri.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep::GltfImport;

std::string TextOf(std::string_view uri)
{
    const std::optional<DataUri> data = DecodeDataUri(uri);
    return data ? std::string(data->bytes.begin(), data->bytes.end()) : "invalid";
}

TEST(DataUri, IsDecodedWithAndWithoutPadding)
{
    EXPECT_EQ(TextOf("data:;base64,YQ=="), "a");
    EXPECT_EQ(TextOf("data:;base64,YWI"), "ab");
    EXPECT_EQ(TextOf("data:application/octet-stream;base64,YWJj"), "abc");
    EXPECT_EQ(TextOf("data:;base64,"), "");
    EXPECT_EQ(TextOf("data:;base64,-_-_"), TextOf("data:;base64,+/+/"));
}

TEST(DataUri, NamesTheMediaType)
{
    EXPECT_EQ(DecodeDataUri("data:image/png;charset=x;base64,YQ==")->mediaType, "image/png");
    EXPECT_EQ(DecodeDataUri("data:;base64,YQ==")->mediaType, "");
}

TEST(DataUri, RefusesOtherEncodingsAndCharacters)
{
    EXPECT_EQ(TextOf("data:text/plain,abc"), "invalid");
    EXPECT_EQ(TextOf("data:;base64"), "invalid");
    EXPECT_EQ(TextOf("data:;base64,Y!=="), "invalid");
    EXPECT_EQ(TextOf("data:;base64,YWJjY"), "invalid");
    EXPECT_FALSE(IsDataUri("database.bin"));
}

}  // namespace

#include <sceneprep/model/Uri.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::DecodeUri;
using Sceneprep::EncodeUri;

TEST(EncodeUri, EncodesCharactersThatReferencesMustNotContain)
{
    EXPECT_EQ(EncodeUri("a/b-c_d.e~1.png"), "a/b-c_d.e~1.png");
    EXPECT_EQ(EncodeUri("..\\a b#?%.png"), "../a%20b%23%3F%25.png");
    EXPECT_EQ(EncodeUri("50%25.png"), "50%2525.png");
    EXPECT_EQ(EncodeUri("https://host/a%20b.png"), "https://host/a%20b.png");
    EXPECT_EQ(EncodeUri("M\xC3\xBChle.png"), "M%C3%BChle.png");
}

TEST(DecodeUri, DecodesPercentEncoding)
{
    EXPECT_EQ(DecodeUri("a/b.png"), "a/b.png");
    EXPECT_EQ(DecodeUri("my%20wood%2epng"), "my wood.png");
    EXPECT_EQ(DecodeUri("50%2525.png"), "50%25.png");
    EXPECT_EQ(DecodeUri("M%C3%BChle"), "M\xC3\xBChle");
    EXPECT_EQ(DecodeUri("https://host/a%20b.png"), "https://host/a%20b.png");
}

TEST(DecodeUri, KeepsOtherCharacters)
{
    for (const char* text : {"", "%", "100%", "%2", "a%zz", "%+1", "%-1", "% 1", "%2g", "a%00b"})
        EXPECT_EQ(DecodeUri(text), text);
}

TEST(DecodeUri, UndoesTheEncodingOfAnyByte)
{
    for (int byte = 1; byte < 256; ++byte)
    {
        if (byte == '\\')
            continue;  // becomes a forward slash
        const std::string path = {'a', static_cast<char>(byte), '2', '0'};
        EXPECT_EQ(DecodeUri(EncodeUri(path)), path) << byte;
    }
}

}  // namespace

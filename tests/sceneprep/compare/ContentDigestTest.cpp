#include <gtest/gtest.h>
#include <sceneprep/compare/ContentDigest.h>

#include <set>
#include <string>

namespace
{

using Sceneprep::ContentDigest;

std::string DigestOf(const std::string& bytes) { return ContentDigest(bytes.data(), bytes.size()); }

TEST(ContentDigestTest, EqualBytesHaveEqualDigests)
{
    EXPECT_EQ(DigestOf("the same bytes"), DigestOf("the same bytes"));
    EXPECT_EQ(ContentDigest(nullptr, 0), DigestOf(""));
}

TEST(ContentDigestTest, EveryBitAndTheLengthMatter)
{
    const std::string bytes = "nineteen characters";
    std::set<std::string> digests = {DigestOf(bytes)};
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        for (unsigned bit = 0; bit < 8; ++bit)
        {
            std::string changed = bytes;
            changed[i] = static_cast<char>(static_cast<unsigned char>(changed[i]) ^ (1U << bit));
            digests.insert(DigestOf(changed));
        }
    }
    EXPECT_EQ(digests.size(), 1 + 8 * bytes.size());
    EXPECT_NE(DigestOf(std::string(8, '\0')), DigestOf(std::string(9, '\0')));
}

}  // namespace

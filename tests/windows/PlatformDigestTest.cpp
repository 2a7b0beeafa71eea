#include <importing/records/ContentHash.h>

#include <gtest/gtest.h>
#include <support/Random.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <windows.h>

#include <shlwapi.h>

namespace
{

/// Returns the output of the platform's function as a little-endian number.
std::uint32_t PlatformDigest(std::vector<unsigned char> bytes)
{
    const auto size = static_cast<DWORD>(bytes.size());
    bytes.push_back(0);  // HashData refuses a null pointer, even without bytes.
    std::uint32_t output = 0;
    HashData(bytes.data(), size, reinterpret_cast<BYTE*>(&output), sizeof(output));
    return output;
}

TEST(PlatformDigest, BytesAreDigestedByThePlatform)
{
    Support::Random random(1);
    std::vector<unsigned char> bytes;
    for (int size = 1; size < 200; ++size)
    {
        bytes.push_back(static_cast<unsigned char>(random.Below(256)));
        EXPECT_EQ(Importing::Digest(bytes.data(), bytes.size()), PlatformDigest(bytes)) << size;
    }
}

TEST(PlatformDigest, NumbersAreDigestedAsFourBytes)
{
    Support::Random random(2);
    for (int i = 0; i < 1000; ++i)
    {
        const std::uint32_t number = random.Next();
        std::vector<unsigned char> bytes(sizeof(number));
        std::memcpy(bytes.data(), &number, sizeof(number));
        EXPECT_EQ(Importing::Digest(number), PlatformDigest(bytes)) << number;
    }
}

TEST(PlatformDigest, EmptyNameIsDigestedToo)
{
    EXPECT_EQ(Importing::ContentHash().Add(std::string()).Value(), PlatformDigest({}));
    EXPECT_NE(Importing::ContentHash().Add(std::string()).Value(), 0U);
}

}  // namespace

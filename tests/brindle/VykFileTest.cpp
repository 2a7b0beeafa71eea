#include <brindle/VykFile.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace
{

using Bytes = std::vector<unsigned char>;

TEST(VykFileSaver, StartsEmpty) { EXPECT_TRUE(VykFileSaver().GetBytes().empty()); }

TEST(VykFileSaver, AppendsInOrder)
{
    VykFileSaver saver;
    const Bytes bytes = {1, 2, 3};
    EXPECT_TRUE(saver.Write(bytes.data(), 2));
    EXPECT_TRUE(saver.Write(bytes.data() + 2, 1));
    EXPECT_TRUE(saver.Write(bytes.data(), 0));
    EXPECT_EQ(saver.GetBytes(), bytes);
}

TEST(VykFileLoader, ReturnsBytesInOrder)
{
    VykFileLoader loader({1, 2, 3, 4});
    std::array<unsigned char, 3> read = {};
    EXPECT_TRUE(loader.Read(read.data(), 3));
    EXPECT_EQ(read, (std::array<unsigned char, 3>{1, 2, 3}));
    EXPECT_TRUE(loader.Read(read.data(), 1));
    EXPECT_EQ(read[0], 4);
    EXPECT_FALSE(loader.Read(read.data(), 1));
}

TEST(VykFileLoader, ReadPastTheEndWritesAndConsumesNothing)
{
    VykFileLoader loader({1, 2, 3});
    std::array<unsigned char, 4> read = {9, 9, 9, 9};
    EXPECT_FALSE(loader.Read(read.data(), 4));
    EXPECT_EQ(read, (std::array<unsigned char, 4>{9, 9, 9, 9}));
    EXPECT_TRUE(loader.Read(read.data(), 3));
    EXPECT_EQ(read, (std::array<unsigned char, 4>{1, 2, 3, 9}));
}

TEST(VykFileLoader, EnormousSizeIsRefused)
{
    VykFileLoader loader({1, 2, 3});
    unsigned char byte = 9;
    EXPECT_TRUE(loader.Read(&byte, 1));
    EXPECT_FALSE(loader.Read(&byte, std::numeric_limits<std::size_t>::max()));
    EXPECT_EQ(byte, 1);
}

TEST(VykFileLoader, NoBytesCanAlwaysBeRead)
{
    VykFileLoader loader({});
    EXPECT_TRUE(loader.Read(nullptr, 0));
    unsigned char byte = 9;
    EXPECT_FALSE(loader.Read(&byte, 1));
    EXPECT_EQ(byte, 9);
}

}  // namespace

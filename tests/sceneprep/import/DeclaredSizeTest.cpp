#include <sceneprep/import/DeclaredSize.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

std::string BinaryStl(unsigned char triangles)
{
    return std::string(80, 'x') + static_cast<char>(triangles) + std::string(3, '\0') + std::string(50, 'y');
}

TEST(DeclaredSize, CountsTheTrianglesOfBinaryStl)
{
    const TemporaryFolder folder;
    EXPECT_EQ(DeclaredSize(folder.Write("a.STL", BinaryStl(3))), 84 + 3 * 50U);
    EXPECT_EQ(DeclaredSize(folder.Write("a.stl", BinaryStl(3).substr(0, 83))), std::nullopt);
    EXPECT_EQ(DeclaredSize(folder.Write("a.stl", "solid" + BinaryStl(3))), std::nullopt);
}

TEST(DeclaredSize, ReadsTheLengthOfTheFirstChunkOf3ds)
{
    const TemporaryFolder folder;
    EXPECT_EQ(DeclaredSize(folder.Write("a.3ds", std::string("MM\x05\x01\0\0", 6))), 261U);
    EXPECT_EQ(DeclaredSize(folder.Write("a.3ds", std::string("MM\x05\x01\0", 5))), std::nullopt);
    EXPECT_EQ(DeclaredSize(folder.Write("a.3ds", std::string("MN\x05\x01\0\0", 6))), std::nullopt);
}

TEST(DeclaredSize, IsUnknownForOtherFiles)
{
    const TemporaryFolder folder;
    EXPECT_EQ(DeclaredSize(folder.Write("a.obj", BinaryStl(3))), std::nullopt);
    EXPECT_EQ(DeclaredSize(folder / "absent.stl"), std::nullopt);
}

}  // namespace

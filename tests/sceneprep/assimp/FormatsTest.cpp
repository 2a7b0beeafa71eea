#include <sceneprep/assimp/Formats.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace
{

using namespace Sceneprep;

std::string IdOf(const std::string& file)
{
    const std::optional<WriteFormat> format = FindWriteFormat(file);
    return format ? format->id : "none";
}

TEST(Formats, GltfAndGlbMeanVersionTwo)
{
    EXPECT_EQ(IdOf("a.gltf"), "gltf2");
    EXPECT_EQ(IdOf("a.glb"), "glb2");
}

TEST(Formats, SelectsTheFormatByExtension)
{
    EXPECT_EQ(IdOf("a.obj"), "obj");
    EXPECT_EQ(IdOf("a.dae"), "collada");
    EXPECT_EQ(IdOf("a.fbx"), "fbxa");
    EXPECT_EQ(IdOf("a.ply"), "plyb");
    EXPECT_EQ(IdOf("a.stl"), "stlb");
}

TEST(Formats, IgnoresTheCaseOfExtensions) { EXPECT_EQ(IdOf("folder.x/A.GLB"), "glb2"); }

TEST(Formats, UnknownExtensionsHaveNoFormat)
{
    EXPECT_EQ(IdOf("a.zzz"), "none");
    EXPECT_EQ(IdOf("glb"), "none");
    EXPECT_EQ(IdOf("a.pbrt"), "none");
    EXPECT_EQ(IdOf(""), "none");
}

TEST(Formats, ReportWhichContentTheyHold)
{
    EXPECT_TRUE(FindWriteFormat("a.dae")->Holds(Content::Cameras));
    EXPECT_TRUE(FindWriteFormat("a.glb")->Holds(Content::TextureTransforms));
    EXPECT_FALSE(FindWriteFormat("a.obj")->Holds(Content::Cameras));
    EXPECT_TRUE(FindWriteFormat("a.fbx")->LosesRoot());
    EXPECT_FALSE(FindWriteFormat("a.fbx")->HoldsShear());
    EXPECT_TRUE(FindWriteFormat("a.3ds")->IsZUp());
    EXPECT_EQ(FindWriteFormat("a.3ds")->LargestMesh(), 65535U);
    EXPECT_FALSE(FindWriteFormat("a.glb")->IsFlat());
    EXPECT_TRUE(FindWriteFormat("a.stl")->IsFlat());
    EXPECT_TRUE(FindWriteFormat("a.dae")->Holds(Content::Skins));
    EXPECT_FALSE(FindWriteFormat("a.fbx")->Holds(Content::Skins));
    EXPECT_TRUE(FindWriteFormat("a.obj")->IsObj());
    EXPECT_TRUE(FindWriteFormat("a.gltf")->IsGltf());
    EXPECT_TRUE(FindWriteFormat("a.glb")->EmbedsImages());
    EXPECT_FALSE(FindWriteFormat("a.gltf")->EmbedsImages());
}

TEST(Formats, ListsEveryWritableExtensionOnceSorted)
{
    std::vector<std::string> endings;
    for (const WriteFormat& format : ListWriteFormats())
        endings.push_back(format.extension);
    EXPECT_TRUE(std::is_sorted(endings.begin(), endings.end()));
    EXPECT_EQ(std::adjacent_find(endings.begin(), endings.end()), endings.end());
    EXPECT_THAT(endings, testing::IsSupersetOf({"dae", "fbx", "glb", "gltf", "obj", "ply", "stl"}));
}

TEST(Formats, ListsReadableExtensionsWithoutDots)
{
    EXPECT_THAT(ListReadExtensions(), testing::IsSupersetOf({"dae", "fbx", "glb", "gltf", "obj", "ply"}));
}

TEST(Formats, FitTheScreenAsText)
{
    std::istringstream lines(FormatsText());
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_THAT(FormatsText(), testing::HasSubstr("  .glb       "));
    EXPECT_THAT(FormatsText(), testing::HasSubstr("\nRead:\n  .3d"));
}

TEST(Formats, MakeATableWithARowEach)
{
    EXPECT_THAT(FormatsTable(), testing::HasSubstr("| `.glb` | glTF 2.0, binary | yes | yes |"));
    EXPECT_THAT(FormatsTable(), testing::HasSubstr("| `.stl` | STL, binary |  |  |"));
}

TEST(Formats, RecognizeGltfFiles)
{
    EXPECT_TRUE(IsGltfFile("a.gltf"));
    EXPECT_TRUE(IsGltfFile("a.GLB"));
    EXPECT_FALSE(IsGltfFile("glb"));
    EXPECT_FALSE(IsGltfFile("a.obj"));
}

}  // namespace

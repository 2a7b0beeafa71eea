#include <sceneprep/report/Depfile.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::DepfileText;

TEST(Depfile, ListsTheFilesAfterTheOutput)
{
    EXPECT_EQ(DepfileText("out/a.glb", {"a.gltf", "a.bin"}), "out/a.glb: \\\n  a.gltf \\\n  a.bin\n");
    EXPECT_EQ(DepfileText("a.glb", {}), "a.glb:\n");
}

TEST(Depfile, EscapesCharactersThatSeparateNames)
{
    EXPECT_EQ(DepfileText("a b.glb", {"50$.png", "#1 c:d.bin"}), "a\\ b.glb: \\\n  50$$.png \\\n  \\#1\\ c\\:d.bin\n");
}

}  // namespace

#include <sceneprep/model/TextureReferences.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;

class TextureReferencesTest : public testing::Test
{
protected:
    TextureReferencesTest()
    {
        textures_.spelling["wood.png"] = "Wood.PNG";
        textures_.embedded.resize(2);
        textures_.embedded[1].fileName = "C:\\art\\Stone.png";
    }

    Textures textures_;
};

TEST_F(TextureReferencesTest, FileNamesFollowEitherSlash)
{
    EXPECT_EQ(FileNameOf("C:\\art/images\\Stone.png"), "Stone.png");
    EXPECT_EQ(FileNameOf("/art/Stone.png"), "Stone.png");
    EXPECT_EQ(FileNameOf("Stone.png"), "Stone.png");
}

TEST_F(TextureReferencesTest, ARebasedReferenceNamesTheSameFile)
{
    EXPECT_EQ(RebasedReference("tex/Wood.PNG", "/in/a.obj", "/in/b.glb"), "tex/Wood.PNG");
    EXPECT_EQ(RebasedReference("tex/Wood.PNG", "/in/a.obj", "/out/x/b.glb"), "../../in/tex/Wood.PNG");
    EXPECT_EQ(RebasedReference("../Wood.PNG", "/in/models/a.obj", "/in/b.glb"), "Wood.PNG");
    EXPECT_EQ(RebasedReference("Wood.PNG", "models/a.obj", "b.glb"), "models/Wood.PNG");
}

TEST_F(TextureReferencesTest, OtherReferencesDoNotChange)
{
    for (const char* reference : {"/art/Wood.PNG", "C:\\art\\Wood.PNG", "https://host/Wood.PNG", ""})
        EXPECT_EQ(RebasedReference(reference, "/in/a.obj", "/out/b.glb"), reference);
}

TEST_F(TextureReferencesTest, OnlyReferencesToFilesAreRebased)
{
    Importing::SceneContainer scene;
    textures_.spelling["stone.png"] = "Stone.png";
    scene.TextureLibrary = {"wood.png", "*0", "stone.png", "plain.png"};
    RebaseReferences(scene, "/in/a.obj", "/out/b.glb", textures_);
    EXPECT_EQ(SpellingOf(textures_, "wood.png"), "../in/Wood.PNG");
    EXPECT_EQ(SpellingOf(textures_, "*0"), "*0");
    EXPECT_EQ(SpellingOf(textures_, "stone.png"), "Stone.png");  // embedded in the model file
    EXPECT_EQ(SpellingOf(textures_, "plain.png"), "../in/plain.png");
}

TEST_F(TextureReferencesTest, TheSpellingOfTheFileIsKept)
{
    EXPECT_EQ(SpellingOf(textures_, "wood.png"), "Wood.PNG");
    EXPECT_EQ(SpellingOf(textures_, "stone.png"), "stone.png");
}

TEST_F(TextureReferencesTest, AStarAndANumberReferToAnEmbeddedImage)
{
    EXPECT_EQ(FindEmbedded(textures_, "*0"), textures_.embedded.data());
    EXPECT_EQ(FindEmbedded(textures_, "*1"), &textures_.embedded[1]);
    EXPECT_EQ(FindEmbedded(textures_, "*2"), nullptr);
    EXPECT_EQ(FindEmbedded(textures_, "*"), nullptr);
    EXPECT_EQ(FindEmbedded(textures_, "*1x"), nullptr);
    EXPECT_EQ(FindEmbedded(textures_, "*-1"), nullptr);
}

TEST_F(TextureReferencesTest, AnImageIsFoundByItsNameWithoutFolders)
{
    EXPECT_EQ(FindEmbedded(textures_, "textures/Stone.png"), &textures_.embedded[1]);
    EXPECT_EQ(FindEmbedded(textures_, "Wood.PNG"), nullptr);
    EXPECT_EQ(FindEmbedded(textures_, ""), nullptr);
}

}  // namespace

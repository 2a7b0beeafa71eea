#include <sceneprep/report/SceneTree.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

TEST(SceneTree, ChildrenAreIndentedAndReferencesAreListed)
{
    Importing::SceneContainer scene = Support::Scene("Root( A*[a b]{eye}<sun moon>( B[c] ) C )");
    scene.NodeLibrary[3].SetName("");
    EXPECT_EQ(Sceneprep::TreeText(scene),
              "Root\n"
              "  A (2 surfaces, 1 camera, 2 lights, animated)\n"
              "    B (1 surface)\n"
              "  (no name)\n");
}

TEST(SceneTree, EveryNodeTakesOneLine)
{
    Importing::SceneContainer scene = Support::Scene("Root( A )");
    scene.NodeLibrary[1].SetName("two\nlines\x1B[2J");
    EXPECT_EQ(Sceneprep::TreeText(scene),
              "Root\n"
              "  two\\nlines\\x1b[2J\n");
}

TEST(SceneTree, AnEmptySceneHasNoTree)
{
    Importing::SceneContainer scene;
    EXPECT_EQ(Sceneprep::TreeText(scene), "");
}

}  // namespace

#include <sceneprep/export/FileNodes.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;

TEST(FileNodes, BecomeATreeInTheOrderOfTheirAddition)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    FileNodes nodes(format);
    const int root = nodes.Add(-1, "Root");
    const int first = nodes.Add(root, "A");
    nodes.Add(root, "B");
    nodes.Add(first, "C");
    nodes.SetMesh(first, 7);
    EXPECT_EQ(nodes.NameOf(first), "A");
    aiScene scene;
    nodes.MoveTo(scene);
    ASSERT_EQ(scene.mRootNode->mNumChildren, 2U);
    const aiNode& child = *scene.mRootNode->mChildren[0];
    EXPECT_STREQ(child.mName.C_Str(), "A");
    ASSERT_EQ(child.mNumMeshes, 1U);
    EXPECT_EQ(child.mMeshes[0], 7U);
    ASSERT_EQ(child.mNumChildren, 1U);
    EXPECT_EQ(child.mChildren[0]->mParent, &child);
    EXPECT_STREQ(scene.mRootNode->mChildren[1]->mName.C_Str(), "B");
}

TEST(FileNodes, NamesAreMadeWritable)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    FileNodes nodes(format);
    EXPECT_EQ(nodes.NameOf(nodes.Add(-1, "two\nlines")), "two lines");
}

}  // namespace

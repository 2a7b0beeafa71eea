#include <sceneprep/import/ImportAnimations.h>

#include <assimp/anim.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <cmath>
#include <memory>

namespace
{

using namespace Sceneprep;
using Importing::SceneContainer;

/// An animation of node A: positions at 0 and 2 seconds, a rotation of 90 degrees about z at 1 second.
aiAnimation* MakeAnimation(double ticksPerSecond, const char* node = "A")
{
    auto* channel = new aiNodeAnim;
    channel->mNodeName = node;
    channel->mNumPositionKeys = 2;
    channel->mPositionKeys = new aiVectorKey[2]{{0, {0, 0, 0}}, {2 * ticksPerSecond, {4, 0, 0}}};
    channel->mNumRotationKeys = 1;
    channel->mRotationKeys = new aiQuatKey[1]{{ticksPerSecond, aiQuaternion(std::sqrt(0.5F), 0, 0, std::sqrt(0.5F))}};
    auto* animation = new aiAnimation;
    animation->mTicksPerSecond = ticksPerSecond;
    animation->mNumChannels = 1;
    animation->mChannels = new aiNodeAnim* [1] { channel };
    return animation;
}

std::unique_ptr<aiScene> SceneWith(const std::vector<aiAnimation*>& animations)
{
    auto source = std::make_unique<aiScene>();
    source->mAnimations = new aiAnimation*[animations.size()];
    for (aiAnimation* animation : animations)
        source->mAnimations[source->mNumAnimations++] = animation;
    return source;
}

const NodeNames kNames = {{"Root", 0}, {"A", 1}};

TEST(ImportAnimations, MergesKeyTimesAndInterpolates)
{
    SceneContainer scene = Support::Scene("Root( A )");
    EXPECT_TRUE(ImportAnimations(*SceneWith({MakeAnimation(30)}), kNames, scene).Empty());
    ASSERT_EQ(scene.NodeLibrary[1].GetAnimationID(), 0);
    std::vector<Importing::Key>& keys = scene.AnimationLibrary[0];
    ASSERT_EQ(keys.size(), 3U);
    EXPECT_EQ(keys[0].GetTime(), 0U);
    EXPECT_EQ(keys[1].GetTime(), 4800U);
    EXPECT_EQ(keys[2].GetTime(), 9600U);
    EXPECT_EQ(keys[1].GetPosition(), D3DXVECTOR3(2, 0, 0));
    EXPECT_EQ(keys[2].GetPosition(), D3DXVECTOR3(4, 0, 0));
    EXPECT_EQ(keys[0].GetScale(), D3DXVECTOR3(1, 1, 1));
    EXPECT_NEAR(keys[0].GetRotation().z, std::sqrt(0.5F), 1e-6F);
}

TEST(ImportAnimations, RotationsHaveTheDirectionOfTheFile)
{
    SceneContainer scene = Support::Scene("Root( A )");
    ImportAnimations(*SceneWith({MakeAnimation(30)}), kNames, scene);
    const D3DXMATRIX matrix = scene.AnimationLibrary[0][0].GetMatrix();
    const D3DXVECTOR3 x(1, 0, 0);
    D3DXVECTOR3 rotated;
    D3DXVec3TransformCoord(&rotated, &x, &matrix);
    EXPECT_NEAR(rotated.y, 1, 1e-6F);  // a rotation of 90 degrees about z maps x to y
}

TEST(ImportAnimations, FilesWithoutATickLengthUse25TicksPerSecond)
{
    SceneContainer scene = Support::Scene("Root( A )");
    auto source = SceneWith({MakeAnimation(25)});
    source->mAnimations[0]->mTicksPerSecond = 0;
    ImportAnimations(*source, kNames, scene);
    EXPECT_EQ(scene.AnimationLibrary.at(0).at(2).GetTime(), 9600U);
}

TEST(ImportAnimations, KeepsTheFirstAnimationOfANode)
{
    SceneContainer scene = Support::Scene("Root( A )");
    const auto notes = ImportAnimations(*SceneWith({MakeAnimation(30), MakeAnimation(60)}), kNames, scene);
    EXPECT_TRUE(notes.Empty());
    EXPECT_EQ(scene.AnimationLibrary.size(), 1U);
}

TEST(ImportAnimations, SkipsChannelsOfUnknownNodes)
{
    SceneContainer scene = Support::Scene("Root( A )");
    EXPECT_TRUE(ImportAnimations(*SceneWith({MakeAnimation(30, "Other")}), kNames, scene).Empty());
    EXPECT_TRUE(scene.AnimationLibrary.empty());
}

const std::vector<Note> kEarly = {{"animation keys before time 0 are dropped (nodes: 1)", "animation-keys"}};

TEST(ImportAnimations, KeysBeforeTimeZeroBecomeOneKeyAtTimeZero)
{
    SceneContainer scene = Support::Scene("Root( A )");
    auto source = SceneWith({MakeAnimation(30)});
    source->mAnimations[0]->mChannels[0]->mPositionKeys[0].mTime = -20;  // a quarter of the interval up to 60
    EXPECT_EQ(ImportAnimations(*source, kNames, scene).All(), kEarly);
    std::vector<Importing::Key>& keys = scene.AnimationLibrary.at(0);
    ASSERT_EQ(keys.size(), 3U);
    EXPECT_EQ(keys[0].GetTime(), 0U);
    EXPECT_EQ(keys[0].GetPosition(), D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(keys[1].GetTime(), 4800U);
}

TEST(ImportAnimations, TheLastOfSeveralKeysUpToTimeZeroIsKept)
{
    for (const double last : {-5.0, 0.0})
    {
        SceneContainer scene = Support::Scene("Root( A )");
        auto source = SceneWith({MakeAnimation(30)});
        aiNodeAnim& channel = *source->mAnimations[0]->mChannels[0];
        channel.mPositionKeys[0].mTime = -10;
        channel.mPositionKeys[1].mTime = last;
        channel.mRotationKeys[0].mTime = -10;
        EXPECT_EQ(ImportAnimations(*source, kNames, scene).All(), kEarly);
        ASSERT_EQ(scene.AnimationLibrary.at(0).size(), 1U);
        EXPECT_EQ(scene.AnimationLibrary[0][0].GetTime(), 0U);
        EXPECT_EQ(scene.AnimationLibrary[0][0].GetPosition(), D3DXVECTOR3(4, 0, 0));
    }
}

TEST(ImportAnimations, SkipsChannelsOfMorphTargets)
{
    SceneContainer scene = Support::Scene("Root( A )");
    auto source = SceneWith({new aiAnimation});
    aiAnimation& animation = *source->mAnimations[0];
    animation.mNumMorphMeshChannels = 2;
    animation.mMorphMeshChannels = new aiMeshMorphAnim* [2] { new aiMeshMorphAnim, new aiMeshMorphAnim };
    EXPECT_TRUE(ImportAnimations(*source, kNames, scene).Empty());
    EXPECT_TRUE(scene.AnimationLibrary.empty());
}

}  // namespace

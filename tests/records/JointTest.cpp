#include <importing/records/Joint.h>

#include <math/FloatBits.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace
{

using Importing::Joint;
using Support::SameBitsOrNaN;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr D3DXMATRIX kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
constexpr D3DXMATRIX kMirror(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

Joint Filled()
{
    Joint joint("elbow");
    joint.SetLocalTM(kCounted);
    joint.SetBindPoseInverse(kMirror);
    joint.SetParentID(3);
    joint.SetAnimationID(4);
    return joint;
}

void ExpectFilled(Joint& joint)
{
    EXPECT_EQ(joint.GetName(), "elbow");
    EXPECT_TRUE(SameBitsOrNaN(joint.GetLocalTM(), kCounted));
    EXPECT_TRUE(SameBitsOrNaN(joint.GetBindPoseInverse(), kMirror));
    EXPECT_EQ(joint.GetParentID(), 3);
    EXPECT_EQ(joint.GetAnimationID(), 4);
}

TEST(Joint, Defaults)
{
    for (Joint joint : {Joint(), Joint("")})
    {
        EXPECT_EQ(joint.GetName(), "");
        EXPECT_TRUE(SameBitsOrNaN(joint.GetLocalTM(), kIdentity));
        EXPECT_TRUE(SameBitsOrNaN(joint.GetBindPoseInverse(), kIdentity));
        EXPECT_EQ(joint.GetParentID(), -1);
        EXPECT_EQ(joint.GetAnimationID(), -1);
    }
}

TEST(Joint, ConstructedFromANameHasTheOtherDefaults)
{
    Joint joint("knee");
    EXPECT_EQ(joint.GetName(), "knee");
    joint.SetName("");
    EXPECT_TRUE(joint == Joint());
    EXPECT_EQ(joint.GetParentID(), -1);
}

TEST(Joint, SettersStore)
{
    Joint joint = Filled();
    ExpectFilled(joint);
    joint.SetName("wrist");
    EXPECT_EQ(joint.GetName(), "wrist");
}

TEST(Joint, CopiesAndMovesHaveEveryField)
{
    const Joint original = Filled();
    Joint copy(original);
    ExpectFilled(copy);
    Joint assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    ExpectFilled(assigned);
    Joint moved(std::move(copy));
    ExpectFilled(moved);
}

TEST(Joint, JointsThatDifferOnlyInTheirParentAreEqual)
{
    const Joint a = Filled();
    Joint b = Filled();
    b.SetParentID(99);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
}

TEST(Joint, EveryOtherFieldIsCompared)
{
    const Joint original = Filled();
    Joint name = original;
    name.SetName("Elbow");
    Joint local = original;
    local.SetLocalTM(kIdentity);
    Joint bind = original;
    bind.SetBindPoseInverse(kIdentity);
    Joint animation = original;
    animation.SetAnimationID(5);
    for (const Joint* other : {&name, &local, &bind, &animation})
    {
        EXPECT_FALSE(original == *other);
        EXPECT_TRUE(original != *other);
        EXPECT_FALSE(*other == original);
    }
}

TEST(Joint, ZerosOfDifferentSignInAMatrixDiffer)
{
    D3DXMATRIX minusZero = kIdentity;
    minusZero._21 = -0.0F;
    Joint local;
    local.SetLocalTM(minusZero);
    EXPECT_TRUE(local != Joint());
    Joint bind;
    bind.SetBindPoseInverse(minusZero);
    EXPECT_TRUE(bind != Joint());
}

TEST(Joint, NaNInAMatrixEqualsItself)
{
    D3DXMATRIX matrix = kIdentity;
    matrix._33 = std::numeric_limits<float>::quiet_NaN();
    Joint joint;
    joint.SetLocalTM(matrix);
    EXPECT_TRUE(joint == Joint(joint));
}

/// A joint that overrides its name.
class NamedJoint : public Joint
{
public:
    std::string GetName() override { return "elbow"; }
};

TEST(Joint, ComparisonReadsTheOtherThroughItsGetters)
{
    const Joint elbow("elbow");
    const NamedJoint named;
    EXPECT_TRUE(elbow == named);
    EXPECT_FALSE(named == elbow) << "its stored name is empty";
}

}  // namespace

#include <sceneprep/assimp/CameraFrame.h>

#include <gtest/gtest.h>

#include <numbers>

namespace
{

using namespace Sceneprep;

void ExpectNear(const D3DXVECTOR3& actual, const D3DXVECTOR3& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-6F);
    EXPECT_NEAR(actual.y, expected.y, 1e-6F);
    EXPECT_NEAR(actual.z, expected.z, 1e-6F);
}

TEST(CameraFrame, TheIdentityLooksAlongZWithYUp)
{
    const CameraFrame frame = FrameFromOffset({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    EXPECT_EQ(frame.position, D3DXVECTOR3(0, 0, 0));
    EXPECT_EQ(frame.forward, D3DXVECTOR3(0, 0, 1));
    EXPECT_EQ(frame.up, D3DXVECTOR3(0, 1, 0));
}

TEST(CameraFrame, OffsetMatrixRoundTrips)
{
    const CameraFrame frame = FrameFromOffset(OffsetFromFrame({{1, 2, 3}, {0, 0, -5}, {3, 0, 0}}));
    ExpectNear(frame.position, {1, 2, 3});
    ExpectNear(frame.forward, {0, 0, -1});
    ExpectNear(frame.up, {1, 0, 0});
}

TEST(CameraFrame, OffsetMatrixIsNotMirrored)
{
    const D3DXMATRIX offset = OffsetFromFrame({{0, 0, 0}, {1, 1, 0}, {0, 0, 1}});
    EXPECT_NEAR(D3DXMatrixDeterminant(&offset), 1, 1e-6F);
}

TEST(CameraFrame, ReplacesAnUpDirectionThatIsParallelToForward)
{
    const CameraFrame frame = FrameFromOffset(OffsetFromFrame({{0, 0, 0}, {0, -1, 0}, {0, 1, 0}}));
    ExpectNear(frame.forward, {0, -1, 0});
    EXPECT_NEAR(frame.up.y, 0, 1e-6F);
}

TEST(CameraFrame, AZeroForwardDirectionGivesNoRotation)
{
    const D3DXMATRIX offset = OffsetFromFrame({{4, 5, 6}, {0, 0, 0}, {0, 0, 0}});
    EXPECT_EQ(offset._11, 1);
    EXPECT_EQ(offset._22, 1);
    EXPECT_EQ(offset._33, 1);
    EXPECT_EQ(offset._42, 5);
}

TEST(CameraFrame, NormalizesDirections)
{
    const CameraFrame frame = FrameFromOffset({2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1});
    ExpectNear(frame.forward, {0, 0, 1});
    ExpectNear(frame.up, {0, 1, 0});
}

TEST(CameraFrame, FieldOfViewScalesByTangents)
{
    const float right = static_cast<float>(std::numbers::pi / 2);
    EXPECT_NEAR(OtherFieldOfView(right, 1), right, 1e-6F);
    EXPECT_NEAR(OtherFieldOfView(right, 0.5F), 0.92729522F, 1e-6F);
}

}  // namespace

#include <sceneprep/import/gltf/LocalMatrix.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <importing/math/D3DXMath.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

D3DXMATRIX Local(const std::string& text)
{
    const Json json = Json::parse(text);
    return LocalMatrix(Field(json, {}));
}

TEST(LocalMatrix, OfAMatrixHasItsNumbersInTheSameOrder)
{
    const D3DXMATRIX matrix = Local(R"({"matrix":[1,2,3,0,5,6,7,0,9,10,11,0,13,14,15,1]})");
    EXPECT_EQ(matrix._12, 2);
    EXPECT_EQ(matrix._41, 13);
    EXPECT_EQ(matrix._43, 15);
}

TEST(LocalMatrix, ScalesThenRotatesThenTranslates)
{
    // A quarter turn about z.
    const D3DXMATRIX matrix =
        Local(R"({"translation":[1,2,3],"rotation":[0,0,0.70710678118654757,0.70710678118654757],"scale":[2,3,4]})");
    D3DXVECTOR3 point(1, 0, 1);
    D3DXVec3TransformCoord(&point, &point, &matrix);
    EXPECT_NEAR(point.x, 1, 1e-6);
    EXPECT_NEAR(point.y, 2 + 2, 1e-6);
    EXPECT_NEAR(point.z, 3 + 4, 1e-6);
}

TEST(LocalMatrix, PartsAreStoredOrComputedFromTheMatrix)
{
    const Json json = Json::parse(R"([{"scale":[2,3,4]},{"matrix":[2,0,0,0,0,3,0,0,0,0,4,0,5,6,7,1]}])");
    EXPECT_EQ(PlacementOf(Field(json[0], {})).scale[2], 4);
    const Placement placement = PlacementOf(Field(json[1], {}));
    EXPECT_NEAR(placement.scale[1], 3, 1e-6);
    EXPECT_NEAR(placement.rotation[3], 1, 1e-6);
    EXPECT_EQ(placement.translation[2], 7);
}

TEST(LocalMatrix, NeedsTheRightNumberOfElements)
{
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"matrix":[1,2,3]}]})").Problem(),
              "nodes[0].matrix: has 3 elements, 16 expected");
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"rotation":[0,0,"1",0]}]})").Problem(),
              R"(nodes[0].rotation[2]: "1" is not a number)");
}

}  // namespace

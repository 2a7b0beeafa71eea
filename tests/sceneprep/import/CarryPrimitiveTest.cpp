#include <sceneprep/import/CarryPrimitive.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using namespace Sceneprep;

std::vector<float> FloatsOf(const CarriedAccessor& accessor)
{
    std::vector<float> values(accessor.bytes.size() / sizeof(float));
    std::memcpy(values.data(), accessor.bytes.data(), accessor.bytes.size());
    return values;
}

/// A triangle with one texture coordinate set and a target that lifts its last corner.
class CarryPrimitiveTest : public testing::Test
{
protected:
    CarryPrimitiveTest()
    {
        mesh_.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
        mesh_.mNumVertices = 3;
        mesh_.mVertices = new aiVector3D[3]{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        mesh_.mTextureCoords[0] = new aiVector3D[3]{{0, 0, 0}, {1, 0, 0}, {0, 0.25F, 0}};
        mesh_.mNumFaces = 1;
        mesh_.mFaces = new aiFace[1];
        mesh_.mFaces[0].mNumIndices = 3;
        mesh_.mFaces[0].mIndices = new unsigned[3]{0, 1, 2};
        mesh_.mAnimMeshes = new aiAnimMesh* [2] {};
        AddTarget("Lift", 3);
    }

    void AddTarget(const char* name, unsigned vertices)
    {
        auto* target = new aiAnimMesh;
        target->mName = name;
        target->mWeight = 0.5F;
        target->mNumVertices = vertices;
        target->mVertices = new aiVector3D[vertices];
        target->mVertices[vertices - 1] = {0, 3, 0};
        if (vertices == 3)
            target->mVertices[1] = {1, 0, 0};
        mesh_.mAnimMeshes[mesh_.mNumAnimMeshes++] = target;
    }

    aiMesh mesh_;
    Json object_ = Json::object();
};

TEST_F(CarryPrimitiveTest, TargetsHoldDifferencesAndBounds)
{
    const CarriedPrimitive primitive = CarryPrimitive(mesh_, object_);
    ASSERT_EQ(primitive.targets.size(), 1U);
    const CarriedAccessor& moved = primitive.targets[0].at("POSITION");
    EXPECT_EQ(FloatsOf(moved), (std::vector<float>{0, 0, 0, 0, 0, 0, 0, 2, 0}));
    EXPECT_EQ(moved.max, Json::array({0.0F, 2.0F, 0.0F}));
    EXPECT_EQ(object_, Json::parse(R"({"weights": [0.5], "extras": {"targetNames": ["Lift"]}})"));
}

TEST_F(CarryPrimitiveTest, TheMeshItselfIsComplete)
{
    const CarriedPrimitive primitive = CarryPrimitive(mesh_, object_);
    EXPECT_EQ(primitive.mode, 4);
    EXPECT_EQ(primitive.indices->count, 3U);
    EXPECT_EQ(FloatsOf(primitive.attributes.at("TEXCOORD_0")), (std::vector<float>{0, 1, 1, 1, 0, 0.75F}));
    EXPECT_EQ(primitive.attributes.at("POSITION").min, Json::array({0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(primitive.attributes.count("NORMAL"), 0U);
}

TEST_F(CarryPrimitiveTest, TargetsOfAnotherSizeAreSkipped)
{
    AddTarget("Odd", 2);
    EXPECT_EQ(CarryPrimitive(mesh_, object_).targets.size(), 1U);
}

TEST_F(CarryPrimitiveTest, OnlyMorphTargetsPointsAndLinesAreCarriedWhole)
{
    EXPECT_TRUE(IsCarriedWhole(mesh_));
    aiMesh plain;
    plain.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    EXPECT_FALSE(IsCarriedWhole(plain));
    plain.mPrimitiveTypes = aiPrimitiveType_LINE;
    EXPECT_TRUE(IsCarriedWhole(plain));
    plain.mPrimitiveTypes = aiPrimitiveType_POINT;
    EXPECT_TRUE(IsCarriedWhole(plain));
}

TEST_F(CarryPrimitiveTest, LinesKeepTheirEndsAndPointsNeedNoIndices)
{
    mesh_.mPrimitiveTypes = aiPrimitiveType_LINE;
    mesh_.mFaces[0].mNumIndices = 2;
    const CarriedPrimitive lines = CarryPrimitive(mesh_, object_);
    EXPECT_EQ(lines.mode, 1);
    EXPECT_EQ(lines.indices->count, 2U);
    mesh_.mPrimitiveTypes = aiPrimitiveType_POINT;
    mesh_.mNumFaces = 0;
    const CarriedPrimitive points = CarryPrimitive(mesh_, object_);
    EXPECT_EQ(points.mode, 0);
    EXPECT_FALSE(points.indices.has_value());
    mesh_.mNumFaces = 1;
}

}  // namespace

#include <sceneprep/export/gltf/CarriedAccessors.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

class GltfCarriedAccessors : public testing::Test
{
protected:
    const Json& Add(const CarriedAccessor& accessor, Usage usage, bool needsBounds = false)
    {
        return written_.Accessor(AddCarried(accessor, usage, needsBounds, written_.buffers, written_.document));
    }

    SceneprepTests::WrittenDocument written_;
};

TEST_F(GltfCarriedAccessors, NumbersAreWrittenAsTheyWereStored)
{
    const Json accessor = Add({kUnsignedByte, "VEC4", true, 1, {1, 2, 3, 4}}, Usage::Vertices);
    EXPECT_EQ(accessor, Json::parse(R"({"bufferView": 0, "componentType": 5121, "count": 1, "type": "VEC4",
        "normalized": true})"));
    EXPECT_EQ(written_.Bytes(), "\1\2\3\4");
}

TEST_F(GltfCarriedAccessors, VertexAttributesStartAtMultiplesOfFourBytes)
{
    Add({kByte, "VEC3", false, 2, {1, 2, 3, 4, 5, 6}}, Usage::Vertices);
    EXPECT_EQ(written_.Bytes(), std::string("\1\2\3\0\4\5\6\0", 8));
    EXPECT_EQ(written_.document.bufferViews[0]["byteStride"], 4);
    Add({kByte, "SCALAR", false, 2, {1, 2}}, Usage::Other);
    EXPECT_FALSE(written_.document.bufferViews[1].contains("byteStride"));
}

TEST_F(GltfCarriedAccessors, BoundsAreKeptOrComputed)
{
    CarriedAccessor accessor = {kShort, "VEC2", false, 2, {1, 0, 2, 0, 255, 255, 3, 0}};
    EXPECT_FALSE(Add(accessor, Usage::Other).contains("min"));
    EXPECT_EQ(Add(accessor, Usage::Other, true)["min"], Json::array({-1, 2}));
    EXPECT_EQ(Add(accessor, Usage::Other, true)["max"], Json::array({1, 3}));
    accessor.min = Json::array({-9, -9});
    accessor.max = Json::array({9, 9});
    EXPECT_EQ(Add(accessor, Usage::Other)["min"], Json::array({-9, -9}));
}

TEST_F(GltfCarriedAccessors, AListWritesEachOnceAndScalarsWithBounds)
{
    Carried carried;
    carried.accessors = {{kUnsignedByte, "SCALAR", false, 2, {3, 1}}, {kUnsignedByte, "VEC2", false, 1, {3, 1}}};
    CarriedAccessorList list(carried, written_.buffers, written_.document);
    EXPECT_EQ(list.Find(1), 0);
    EXPECT_EQ(list.Find(0), 1);
    EXPECT_EQ(list.Find(1), 0);
    EXPECT_EQ(written_.Accessor(1)["min"], Json::array({1}));
    EXPECT_FALSE(written_.Accessor(0).contains("min"));
}

}  // namespace

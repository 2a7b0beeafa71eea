#include <sceneprep/import/gltf/Accessors.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;

class AccessorsTest : public testing::Test
{
protected:
    std::vector<float> Floats(const std::string& type = "SCALAR")
    {
        Prepare();
        return accessors_->Floats(Field(index_, {}), {type});
    }

    CarriedAccessor Carry()
    {
        Prepare();
        return accessors_->Carry(Field(index_, {}));
    }

    std::string Problem(const std::string& type = "SCALAR")
    {
        try
        {
            Floats(type);
        }
        catch (const FormatError& error)
        {
            return error.what();
        }
        return {};
    }

    Json& Last() { return document_.json["accessors"].back(); }

    void Prepare()
    {
        json_ = Json::parse(document_.Text());
        buffers_.emplace(Field(json_, {}), "", std::nullopt);
        views_.emplace(Field(json_, {}), *buffers_);
        accessors_.emplace(Field(json_, {}), *views_);
        index_ = json_["accessors"].size() - 1;
    }

    GltfDocument document_;
    Json json_;
    Json index_;
    std::optional<Buffers> buffers_;
    std::optional<BufferViews> views_;
    std::optional<Accessors> accessors_;
};

TEST_F(AccessorsTest, ReadInterleavedElements)
{
    document_.Accessor<float>({1, 2, 3, 4, 5, 6}, "SCALAR", 1, {{"count", 2}, {"byteOffset", 4}});
    document_.json["bufferViews"][0]["byteStride"] = 12;
    EXPECT_THAT(Floats(), ElementsAre(2, 5));
    const CarriedAccessor carried = Carry();
    EXPECT_EQ(carried.bytes.size(), 8U);
    EXPECT_EQ(carried.count, 2U);
}

TEST_F(AccessorsTest, WithoutABufferViewAreZero)
{
    document_.json["accessors"] = {{{"componentType", 5126}, {"count", 3}, {"type", "SCALAR"}}};
    EXPECT_THAT(Floats(), ElementsAre(0, 0, 0));
}

TEST_F(AccessorsTest, SparseOnesReplaceElements)
{
    const int indices = document_.View(std::string("\1\0\3\0", 4));
    const float values[] = {7, 9};
    const int replaced = document_.View({reinterpret_cast<const char*>(values), sizeof(values)});
    const Json sparse = {{"count", 2},
                         {"indices", {{"bufferView", indices}, {"componentType", 5123}}},
                         {"values", {{"bufferView", replaced}}}};
    document_.Accessor<float>({1, 2, 3, 4}, "SCALAR", 1, {{"sparse", sparse}});
    EXPECT_THAT(Floats(), ElementsAre(1, 7, 3, 9));
    Last().erase("bufferView");
    EXPECT_THAT(Floats(), ElementsAre(0, 7, 0, 9));
    Last()["count"] = 3;
    EXPECT_EQ(Problem(), "accessors[0].sparse.indices: 3 is not below 3");
    Last()["sparse"]["indices"]["componentType"] = 5126;
    EXPECT_EQ(Problem(), "accessors[0].sparse.indices.componentType: 5126 is not an unsigned integer type");
}

TEST_F(AccessorsTest, AreCarriedAsTheyAreStored)
{
    document_.Accessor<std::int8_t>({-128, 127}, "SCALAR", 1, {{"normalized", true}, {"min", {-128}}, {"max", {127}}});
    const CarriedAccessor carried = Carry();
    EXPECT_THAT(carried.bytes, ElementsAre(128, 127));
    EXPECT_EQ(carried.componentType, 5120);
    EXPECT_TRUE(carried.isNormalized);
    EXPECT_EQ(carried.min.dump() + carried.max.dump(), "[-128][127]");
    EXPECT_THAT(Floats(), ElementsAre(-1, 1));
}

TEST_F(AccessorsTest, OutsideOfTheirBufferViewAreRefused)
{
    document_.Accessor<float>({1, 2, 3}, "SCALAR", 1);
    Last()["count"] = 4;
    EXPECT_EQ(Problem(),
              "accessors[0]: 4 elements of 4 bytes from byte 0 on lead outside the buffer view, which has 12 bytes");
    Last()["count"] = 3;
    Last()["byteOffset"] = 4;
    EXPECT_THAT(Problem(), HasSubstr("3 elements of 4 bytes from byte 4 on lead outside"));
    Last()["byteOffset"] = 18446744073709551615U;
    EXPECT_THAT(Problem(), HasSubstr("lead outside"));
    Last()["byteOffset"] = 0;
    Last()["count"] = 4611686018427387905U;
    EXPECT_THAT(Problem(), HasSubstr("lead outside"));
    Last().erase("bufferView");
    EXPECT_THAT(Problem(), HasSubstr("elements without a buffer view are too many"));
}

TEST_F(AccessorsTest, OfTheWrongTypeAreRefused)
{
    document_.Accessor<float>({1, 2, 3}, "VEC3", 3);
    EXPECT_EQ(Problem(), "accessors[0].type: 'VEC3' is not SCALAR");
    Last()["type"] = "VEC5";
    EXPECT_EQ(Problem(), "accessors[0].type: 'VEC5' is not a type of accessors");
    Last()["type"] = "VEC3";
    Last()["componentType"] = 5124;
    EXPECT_EQ(Problem("VEC3"), "accessors[0].componentType: 5124 is not a component type");
    Last()["componentType"] = 5126;
    document_.json["bufferViews"][0]["byteStride"] = 8;
    EXPECT_EQ(Problem("VEC3"), "accessors[0]: byteStride 8 of the buffer view is below the 12 bytes of an element");
}

}  // namespace

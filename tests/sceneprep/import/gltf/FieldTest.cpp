#include <sceneprep/import/gltf/Field.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;

std::string ProblemOf(const auto& read)
{
    try
    {
        read();
    }
    catch (const FormatError& error)
    {
        return error.what();
    }
    return {};
}

TEST(Field, NamesThePathAndTheValueOfAProblem)
{
    const Json json = Json::parse(R"({"meshes":[{},{"primitives":[{"indices":40}]}]})");
    const Field primitive = Field(json, {}).Member("meshes").Element(1).Member("primitives").Element(0);
    EXPECT_EQ(ProblemOf([&] { primitive.Member("indices").IndexBelow(24); }),
              "meshes[1].primitives[0].indices: 40 is not below 24");
    EXPECT_EQ(ProblemOf([&] { primitive.Member("material"); }), "meshes[1].primitives[0].material: is missing");
    EXPECT_EQ(ProblemOf([&] { primitive.Member("indices").Text(); }),
              "meshes[1].primitives[0].indices: 40 is not a string");
    EXPECT_EQ(ProblemOf([&] { primitive.Size(); }), "meshes[1].primitives[0]: an object is not an array");
    EXPECT_EQ(ProblemOf([&] { Field(json, {}).Fail("is empty"); }), "the document: is empty");
}

TEST(Field, WholeNumbersMayBeSpelledWithADecimalPoint)
{
    const Json json = Json::parse("[3.0, -1, 0.5, 1e300, 7]");
    const Field list(json, {});
    EXPECT_EQ(list.Element(0).Whole(), 3U);
    EXPECT_EQ(list.Element(4).Whole(), 7U);
    for (const std::size_t bad : {1U, 2U, 3U})
        EXPECT_THROW(list.Element(bad).Whole(), FormatError);
    EXPECT_EQ(ProblemOf([&] { list.Element(1).Whole(); }), "[1]: -1 is not a whole number of at least 0");
}

TEST(Field, ListsOfNumbersHaveTheExpectedLength)
{
    const Json json = Json::parse(R"({"scale":[1,2,3],"rotation":[1],"translation":[1,"x",3]})");
    const Field node(json, {});
    std::array<double, 3> scale = {9, 9, 9};
    node.NumbersIfAny("missing", scale);
    EXPECT_EQ(scale[2], 9);
    node.NumbersIfAny("scale", scale);
    EXPECT_EQ(scale[2], 3);
    std::array<double, 4> rotation{};
    EXPECT_EQ(ProblemOf([&] { node.NumbersIfAny("rotation", rotation); }), "rotation: has 1 elements, 4 expected");
    EXPECT_EQ(ProblemOf([&] { node.NumbersIfAny("translation", scale); }), R"(translation[1]: "x" is not a number)");
}

TEST(Field, LongValuesAreCutInProblems)
{
    const Json json = std::string(1000, 'x');
    EXPECT_LT(ProblemOf([&] { Field(json, {}).Number(); }).size(), 100U);
}

TEST(Field, TakeRemovesAMember)
{
    Json json = Json::parse(R"({"a":1,"b":2})");
    EXPECT_EQ(Take(json, "a"), Json(1));
    EXPECT_EQ(json.dump(), R"({"b":2})");
    EXPECT_TRUE(Take(json, "a").is_null());
}

}  // namespace

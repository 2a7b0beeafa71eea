#include <sceneprep/import/gltf/Components.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

#include <cstring>

namespace
{

using namespace Sceneprep::GltfImport;
using testing::ElementsAre;
using testing::FloatEq;

template <typename T>
std::vector<float> Floats(const std::vector<T>& numbers, Component component, bool isNormalized)
{
    const Elements elements = {.data = reinterpret_cast<const std::uint8_t*>(numbers.data()),
                               .count = numbers.size(),
                               .stride = sizeof(T),
                               .type = {1, 1},
                               .component = component,
                               .isNormalized = isNormalized};
    std::vector<float> floats(numbers.size());
    ToFloats(elements, floats.data());
    return floats;
}

TEST(Components, NormalisedIntegersReachFromZeroOrMinusOneToOne)
{
    EXPECT_THAT(Floats<std::uint8_t>({0, 51, 255}, Component::UnsignedByte, true), ElementsAre(0, FloatEq(0.2F), 1));
    EXPECT_THAT(Floats<std::int8_t>({-128, -127, 0, 127}, Component::Byte, true), ElementsAre(-1, -1, 0, 1));
    EXPECT_THAT(Floats<std::uint16_t>({0, 65535}, Component::UnsignedShort, true), ElementsAre(0, 1));
    EXPECT_THAT(Floats<std::int16_t>({-32768, 32767}, Component::Short, true), ElementsAre(-1, 1));
}

TEST(Components, OtherIntegersKeepTheirValue)
{
    EXPECT_THAT(Floats<std::int8_t>({-128, 5}, Component::Byte, false), ElementsAre(-128, 5));
    EXPECT_THAT(Floats<std::int16_t>({-300}, Component::Short, false), ElementsAre(-300));
    EXPECT_THAT(Floats<std::uint32_t>({70000}, Component::UnsignedInt, false), ElementsAre(70000));
    EXPECT_THAT(Floats<float>({0.5F}, Component::Float, true), ElementsAre(0.5F));
}

TEST(Components, ColumnsOfMatricesBeginAtMultiplesOfFourBytes)
{
    const ElementType matrix = ElementTypeOf("MAT3");
    EXPECT_EQ(matrix.SizeIn(Component::UnsignedByte), 12U);
    EXPECT_EQ(ElementTypeOf("MAT2").SizeIn(Component::UnsignedShort), 8U);
    EXPECT_EQ(ElementTypeOf("MAT4").SizeIn(Component::Float), 64U);
    EXPECT_EQ(ElementTypeOf("VEC3").SizeIn(Component::UnsignedByte), 3U);
    EXPECT_EQ(ElementTypeOf("VEC5").Count(), 0U);
    const std::vector<std::uint8_t> bytes = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0};
    std::vector<float> floats(9);
    ToFloats({.data = bytes.data(), .count = 1, .stride = 12, .type = matrix, .component = Component::UnsignedByte},
             floats.data());
    EXPECT_THAT(floats, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(Components, ElementsMayBeInterleaved)
{
    const std::vector<std::uint16_t> shorts = {1, 2, 99, 3, 4, 99};
    std::vector<std::uint32_t> numbers(4);
    ToWholeNumbers({.data = reinterpret_cast<const std::uint8_t*>(shorts.data()),
                    .count = 2,
                    .stride = 6,
                    .type = {1, 2},
                    .component = Component::UnsignedShort},
                   numbers.data());
    EXPECT_THAT(numbers, ElementsAre(1, 2, 3, 4));
}

}  // namespace

#include <pipeline/steps/UVMapping.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>

namespace
{

using namespace Pipeline;

TEST(UVMapping, ReadsProjectionSetAndUnits)
{
    EXPECT_EQ(ParseUVMapping("cubic"), (UVMapping{"cubic", 0, false}));
    EXPECT_EQ(ParseUVMapping("planar-z:7"), (UVMapping{"planar-z", 7, false}));
    EXPECT_EQ(ParseUVMapping("cylindrical:2:world"), (UVMapping{"cylindrical", 2, true}));
}

TEST(UVMapping, RefusesInvalidMappings)
{
    for (const char* text : {"", ":", "cubik", "Cubic", "cubic:", "cubic:8", "cubic:-1", "cubic:1x", "cubic:world",
                             "cubic:0:", "cubic:0:local", "cubic:0:world:", "planar"})
        EXPECT_FALSE(ParseUVMapping(text)) << text;
}

TEST(UVMapping, NamesEveryProjection)
{
    EXPECT_EQ(UVProjectionNames(), "planar-x, planar-y, planar-z, cubic, cylindrical or spherical");
}

struct Example
{
    const char* mapping;
    D3DXVECTOR2 uv;  // of the corner (1, 2, 0) of a quad from (-1, 0) to (1, 2) that looks along +z
};

class UVMappingTest : public testing::TestWithParam<Example>
{};

TEST_P(UVMappingTest, CallsItsOperation)
{
    Importing::Geometry quad = Support::Quad();
    for (Importing::Vertex& vertex : quad.VertexArray)
        vertex.SetPosition(vertex.GetPosition() + D3DXVECTOR3(0, 0, vertex.GetPosition().x));  // depth for all axes
    const UVMapping mapping = *ParseUVMapping(GetParam().mapping);
    GenerateUVs(quad, mapping);
    for (Importing::Vertex& vertex : quad.VertexArray)
    {
        ASSERT_EQ(vertex.GetTexCoordCount(), static_cast<std::uint64_t>(mapping.set) + 1);
        if (vertex.GetPosition().x == 1 && vertex.GetPosition().y == 2)
        {
            EXPECT_FLOAT_EQ(vertex.GetTexCoord(mapping.set).x, GetParam().uv.x);
            EXPECT_FLOAT_EQ(vertex.GetTexCoord(mapping.set).y, GetParam().uv.y);
        }
    }
}

std::string NameOf(const testing::TestParamInfo<Example>& info)
{
    std::string name = info.param.mapping;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

void PrintTo(const Example& example, std::ostream* out) { *out << example.mapping; }

INSTANTIATE_TEST_SUITE_P(Mappings, UVMappingTest,
                         testing::Values(Example{"planar-x", {1, 1}}, Example{"planar-x:0:world", {1.5F, 1.5F}},
                                         Example{"planar-y:1", {1, 1}}, Example{"planar-z:2", {1, 1}},
                                         Example{"planar-z:2:world", {1.5F, 1.5F}}, Example{"cubic", {-1, -1}},
                                         Example{"cubic:0:world", {-2, -2}}, Example{"cylindrical", {0.25F, 0}},
                                         Example{"spherical:3", {0.25F, 0.5F}}),
                         NameOf);

}  // namespace

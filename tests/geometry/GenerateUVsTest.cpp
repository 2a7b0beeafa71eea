#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <cmath>
#include <limits>

namespace
{

using namespace Importing;
using namespace Support;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

D3DXVECTOR2 UV(const Geometry& mesh, std::size_t vertex, int set = 0)
{
    return Vertex(mesh.VertexArray.at(vertex)).GetTexCoord(set);
}

/// Returns a mesh of vertices at (1, 1, 2) with the given normals, followed by two corners that make the box (0, 0, 0)
/// to (2, 4, 8).
Geometry Probe(const std::vector<D3DXVECTOR3>& normals)
{
    Geometry mesh = MeshOf(std::vector<D3DXVECTOR3>(normals.size(), {1, 1, 2}), {});
    for (std::size_t i = 0; i < normals.size(); ++i)
        mesh.VertexArray[i].SetNormal(normals[i]);
    mesh.VertexArray.emplace_back(0.0F, 0.0F, 0.0F);
    mesh.VertexArray.emplace_back(2.0F, 4.0F, 8.0F);
    return mesh;
}

// ---- All six operations

struct Mapping
{
    const char* name;
    int (Geometry::*operation)(int, bool);
    int (*model)(Geometry&, int, bool);
};

class EveryMapping : public testing::TestWithParam<Mapping>
{
protected:
    static int Generate(Geometry& mesh, int set, bool worldUnits)
    {
        return (mesh.*GetParam().operation)(set, worldUnits);
    }
};

INSTANTIATE_TEST_SUITE_P(
    GenerateUVs, EveryMapping,
    testing::Values(Mapping{"PlanarX", &Geometry::GenerateUVsPlanarX, &Models::GenerateUVsPlanarX},
                    Mapping{"PlanarY", &Geometry::GenerateUVsPlanarY, &Models::GenerateUVsPlanarY},
                    Mapping{"PlanarZ", &Geometry::GenerateUVsPlanarZ, &Models::GenerateUVsPlanarZ},
                    Mapping{"Cubic", &Geometry::GenerateUVsCubic, &Models::GenerateUVsCubic},
                    Mapping{"Cylindrical", &Geometry::GenerateUVsCylindrical, &Models::GenerateUVsCylindrical},
                    Mapping{"Spherical", &Geometry::GenerateUVsSpherical, &Models::GenerateUVsSpherical}),
    [](const auto& mapping) { return std::string(mapping.param.name); });

TEST_P(EveryMapping, WritingTheSecondSetOfVerticesWithoutUVsAddsTwoSets)
{
    Geometry mesh = Quad();
    EXPECT_EQ(Generate(mesh, 1, false), 0);
    Geometry first = Quad();
    EXPECT_EQ(Generate(first, 0, false), 0);
    for (std::size_t i = 0; i < 4; ++i)
    {
        ASSERT_EQ(mesh.VertexArray[i].GetTexCoordCount(), 2U);
        EXPECT_TRUE(SameFloats(UV(mesh, i, 0), D3DXVECTOR2(0, 0)));
        EXPECT_TRUE(SameFloats(UV(mesh, i, 1), UV(first, i, 0), NaNs::AllAlike));
    }
}

TEST_P(EveryMapping, KeepsOtherSetsPositionsNormalsAndIndices)
{
    Geometry mesh = Box24();
    for (Vertex& vertex : mesh.VertexArray)
    {
        vertex.SetTexCoord(D3DXVECTOR2(5, 6), 2);
        vertex.SetTexCoord(D3DXVECTOR2(3, 4), 1);
    }
    Geometry expected = mesh;
    Generate(mesh, 1, false);
    for (std::size_t i = 0; i < mesh.VertexArray.size(); ++i)
        expected.VertexArray[i].SetTexCoord(UV(mesh, i, 1), 1);
    EXPECT_TRUE(SameGeometry(mesh, expected));
    EXPECT_FALSE(UV(mesh, 0, 1) == D3DXVECTOR2(3, 4));
}

TEST_P(EveryMapping, KeepsTheHashOfTheMeshAndInvalidatesThoseOfItsVertices)
{
    Geometry mesh = Box24();
    const std::uint32_t hash = mesh.GetHash();
    Generate(mesh, 0, false);
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.GetHash(), hash);
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_FALSE(vertex.GetIsHashCodeValid());
}

TEST_P(EveryMapping, MeshWithoutVerticesDoesNotChange)
{
    ExpectUntouched(Geometry(), 0, [](Geometry& mesh) { return Generate(mesh, 0, false); });
    ExpectUntouched(Geometry(), 0, [](Geometry& mesh) { return Generate(mesh, -1, true); });
}

TEST_P(EveryMapping, NegativeSetIsRefusedBeforeAnythingChanges)
{
    for (const int set : {-1, -2, std::numeric_limits<int>::min()})
    {
        ExpectTooLong(Hashed(Box24()), [set](Geometry& mesh) { Generate(mesh, set, false); });
        ExpectTooLong(Hashed(Quad()), [set](Geometry& mesh) { Generate(mesh, set, true); });
    }
}

TEST_P(EveryMapping, PolySizeAndIndicesDoNotMatter)
{
    Geometry mesh = Quad();
    mesh.SetPolySize(4);
    mesh.IndexArray = {99, 100};
    EXPECT_EQ(Generate(mesh, 0, false), 0);
    EXPECT_EQ(mesh.VertexArray[3].GetTexCoordCount(), 1U);
}

TEST_P(EveryMapping, ReadsTheBoxOnceThroughTheVirtualTable)
{
    MeshOfBounds mesh(Box24(), D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(10, 10, 10));
    Generate(mesh, 0, false);
    EXPECT_EQ(mesh.GetCalls(), 1);
    Generate(mesh, 0, true);
    EXPECT_EQ(mesh.GetCalls(), 2);
    MeshOfBounds empty(Geometry(), D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(10, 10, 10));
    Generate(empty, 0, false);
    EXPECT_EQ(empty.GetCalls(), 1);
}

TEST_P(EveryMapping, KeepsWeightsAndSetsInTheBlock)
{
    for (const int set : {0, 2, 3, 6})
    {
        Geometry mesh = Box24();
        for (Vertex& vertex : mesh.VertexArray)
        {
            vertex.AddWeight(3, 0.5F);
            vertex.SetTexCoord(D3DXVECTOR2(5, 6), 4);
        }
        Geometry expected = mesh;
        Generate(mesh, set, false);
        for (std::size_t i = 0; i < mesh.VertexArray.size(); ++i)
            expected.VertexArray[i].SetTexCoord(UV(mesh, i, set), static_cast<std::uint64_t>(set));
        EXPECT_TRUE(SameGeometry(mesh, expected)) << "set " << set;
    }
}

TEST_P(EveryMapping, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const int set = static_cast<int>(seed % 5);
        const bool worldUnits = seed % 2 == 0;
        ASSERT_TRUE(SameOutcome(
            RandomMesh(seed), [&](Geometry& mesh) { return Generate(mesh, set, worldUnits); },
            [&](Geometry& mesh) { return GetParam().model(mesh, set, worldUnits); }))
            << "seed " << seed;
    }
}

// ---- Planar

TEST(GenerateUVsPlanar, ZMapsTheBoxOntoZeroToOne)
{
    Geometry mesh = Quad();
    EXPECT_EQ(mesh.GenerateUVsPlanarZ(0, false), 0);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0, 0)));
    EXPECT_TRUE(SameFloats(UV(mesh, 1), D3DXVECTOR2(1, 0)));
    EXPECT_TRUE(SameFloats(UV(mesh, 2), D3DXVECTOR2(1, 1)));
    EXPECT_TRUE(SameFloats(UV(mesh, 3), D3DXVECTOR2(0, 1)));
}

TEST(GenerateUVsPlanar, WorldUnitsPutTheCentreAtOneHalf)
{
    Geometry mesh = Quad();
    EXPECT_EQ(mesh.GenerateUVsPlanarZ(0, true), 0);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(-0.5F, -0.5F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 2), D3DXVECTOR2(1.5F, 1.5F)));
}

TEST(GenerateUVsPlanar, EachAxisDropsItsOwnCoordinate)
{
    Geometry mesh = Probe({{0, 0, 1}});
    mesh.GenerateUVsPlanarX(0, false);
    mesh.GenerateUVsPlanarY(1, false);
    mesh.GenerateUVsPlanarZ(2, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0, 0), D3DXVECTOR2(0.25F, 0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 0, 1), D3DXVECTOR2(0.5F, 0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 0, 2), D3DXVECTOR2(0.5F, 0.25F)));
}

TEST(GenerateUVsPlanar, MeshEntirelyBelowZeroInYIsStretched)
{
    // The box ends at the smallest positive float, so its height is 3, not 2, and v does not reach 1.
    Geometry mesh = Quad(0, -3, 1, -1);
    mesh.GenerateUVsPlanarX(0, false);
    mesh.GenerateUVsPlanarZ(1, false);
    const float top = (-1.0F / 3.0F + 0.5F) - (-0.5F);
    EXPECT_NEAR(top, 2.0F / 3, 1e-6);
    EXPECT_TRUE(SameFloats(UV(mesh, 2, 0).y, top));
    EXPECT_TRUE(SameFloats(UV(mesh, 2, 1).y, top));
    EXPECT_TRUE(SameFloats(UV(mesh, 0, 1).y, 0.0F));
}

TEST(GenerateUVsPlanar, HalfIsAddedBeforeTheCentreIsSubtracted)
{
    // Far from the origin the half is lost in rounding: 1e8 + 0.5 is 1e8, and 1e8 - 1e8 + 0.5 would be 0.5.
    MeshOfBounds mesh(MeshOf({{1e8F, 0, 0}}, {}), D3DXVECTOR3(1e8F, 0, 0), D3DXVECTOR3(1e8F, 1, 1));
    mesh.GenerateUVsPlanarZ(0, true);
    EXPECT_TRUE(SameFloats(UV(mesh, 0).x, 0.0F));
}

TEST(GenerateUVsPlanar, BoxOfAnOverrideIsUsed)
{
    MeshOfBounds mesh(Quad(), D3DXVECTOR3(-2, 0, 0), D3DXVECTOR3(2, 8, 1));
    mesh.GenerateUVsPlanarZ(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 2), D3DXVECTOR2(0.75F, 0.25F)));
}

TEST(GenerateUVsPlanar, FlatBoxDividesByZero)
{
    MeshOfBounds mesh(Quad(), D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(0, 2, 0));
    mesh.GenerateUVsPlanarZ(0, false);
    EXPECT_TRUE(std::isnan(UV(mesh, 0).x));
    EXPECT_TRUE(SameFloats(UV(mesh, 2).y, 1.0F));

    MeshOfBounds atOne(Quad(), D3DXVECTOR3(-1, 0, 0), D3DXVECTOR3(-1, 2, 0));
    atOne.GenerateUVsPlanarZ(0, false);
    EXPECT_EQ(UV(atOne, 1).x, kInfinity);
}

// ---- Cubic

TEST(GenerateUVsCubic, NormalAlongMinusZMirrorsNothing)
{
    Geometry mesh = Probe({{0, 0, -1}});
    EXPECT_EQ(mesh.GenerateUVsCubic(0, false), 0);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0.5F, -0.25F)));
}

TEST(GenerateUVsCubic, LargestComponentOfTheNormalChoosesThePlane)
{
    Geometry mesh = Probe({{3, 1, 2}, {-3, 1, 2}, {1, 2, 3}, {1, 2, -3}, {1, 3, 2}, {1, -3, 2}});
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0.25F, -0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 1), D3DXVECTOR2(-0.25F, -0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 2), D3DXVECTOR2(-0.5F, -0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 3), D3DXVECTOR2(0.5F, -0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 4), D3DXVECTOR2(0.5F, -0.25F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 5), D3DXVECTOR2(-0.5F, -0.25F)));
}

TEST(GenerateUVsCubic, AlongYTheVCoordinateIsTheNegatedDepth)
{
    Geometry mesh = MeshOf({{1, 0, 6}, {0, 0, 0}, {2, 4, 8}}, {});
    mesh.VertexArray[0].SetNormal(D3DXVECTOR3(0, 1, 0));
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0.5F, -0.75F)));
}

TEST(GenerateUVsCubic, TiesPreferXThenZThenY)
{
    Geometry mesh = MeshOf({{2, 0, 2}, {2, 0, 2}, {2, 0, 2}, {0, 0, 0}, {2, 4, 8}}, {});
    mesh.VertexArray[0].SetNormal(D3DXVECTOR3(1, -1, 1));
    mesh.VertexArray[1].SetNormal(D3DXVECTOR3(0, 1, -1));
    mesh.VertexArray[2].SetNormal(D3DXVECTOR3(-1, 1, 0));
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0.25F, -0.0F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 1), D3DXVECTOR2(1, -0.0F)));
    EXPECT_TRUE(SameFloats(UV(mesh, 2), D3DXVECTOR2(-0.25F, -0.0F)));
}

TEST(GenerateUVsCubic, MeasuresFromTheMinimumOfTheBoxInWorldUnitsToo)
{
    Geometry mesh = Probe({{0, 0, -1}, {1, 0, 0}});
    mesh.GenerateUVsCubic(0, true);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(1, -1)));
    EXPECT_TRUE(SameFloats(UV(mesh, 1), D3DXVECTOR2(2, -1)));
}

TEST(GenerateUVsCubic, ZeroNormalGivesNaNForU)
{
    Geometry mesh = Probe({{0, 0, 0}});
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(std::isnan(UV(mesh, 0).x));
    EXPECT_TRUE(SameFloats(UV(mesh, 0).y, -0.25F));
}

TEST(GenerateUVsCubic, InfiniteNormalGivesNaNForU)
{
    Geometry mesh = Probe({{0, kInfinity, 0}});
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(std::isnan(UV(mesh, 0).x));
    EXPECT_TRUE(SameFloats(UV(mesh, 0).y, -0.25F));
}

TEST(GenerateUVsCubic, NaNNormalRepeatsThePreviousCoordinates)
{
    Geometry mesh = Probe({{0, 0, -1}, {kNaN, 0, 0}, {0, kNaN, 1}, {1, 0, 0}, {1, 1, kNaN}});
    mesh.VertexArray[1].SetPosition(D3DXVECTOR3(2, 4, 8));
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 1), UV(mesh, 0)));
    EXPECT_TRUE(SameFloats(UV(mesh, 2), UV(mesh, 0)));
    EXPECT_TRUE(SameFloats(UV(mesh, 4), UV(mesh, 3)));
    EXPECT_FALSE(UV(mesh, 3) == UV(mesh, 0));
}

TEST(GenerateUVsCubic, NaNNormalOfTheFirstVertexGivesZero)
{
    Geometry mesh = Probe({{kNaN, 0, 0}});
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0, 0)));
}

TEST(GenerateUVsCubic, CallsDoNotDependOnEarlierCalls)
{
    Geometry mesh = Probe({{0, 0, -1}});
    mesh.GenerateUVsCubic(0, false);
    mesh.VertexArray[0].SetNormal(D3DXVECTOR3(kNaN, 0, 0));
    mesh.GenerateUVsCubic(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0), D3DXVECTOR2(0, 0)));
}

// ---- Cylindrical and spherical

TEST(GenerateUVsCylindrical, AngleComesFromTheNormal)
{
    Geometry mesh = Probe({{1, 0, 1}, {1, 0, -1}, {-1, 0, 0}, {0, 0, 1}, {0, 0, -1}});
    EXPECT_EQ(mesh.GenerateUVsCylindrical(0, false), 0);
    EXPECT_TRUE(SameFloats(UV(mesh, 0).x, 0.0F));
    EXPECT_TRUE(SameFloats(UV(mesh, 1).x, 1.0F));
    EXPECT_TRUE(SameFloats(UV(mesh, 2).x, 0.5F));
    EXPECT_NEAR(UV(mesh, 3).x, 0.25F, 1e-6);
    EXPECT_NEAR(UV(mesh, 4).x, 0.75F, 1e-6);
}

TEST(GenerateUVsCylindrical, NormalWithoutDepthIsInTheSecondHalf)
{
    Geometry mesh = Probe({{1, 0, 0}, {1, 0, -0.0F}});
    mesh.GenerateUVsCylindrical(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0).x, 1.0F));
    EXPECT_TRUE(SameFloats(UV(mesh, 1).x, 1.0F));
}

TEST(GenerateUVsCylindrical, NormalsAreNotNormalisedFirst)
{
    Geometry mesh = Probe({{1.5F, 0, 1}, {-2, 0, -1}, {0.5F, 0.5F, 0.1F}});
    mesh.GenerateUVsCylindrical(0, false);
    EXPECT_TRUE(std::isnan(UV(mesh, 0).x));
    EXPECT_TRUE(std::isnan(UV(mesh, 1).x));
    EXPECT_NEAR(UV(mesh, 2).x, 1.0F / 6, 1e-6);
}

TEST(GenerateUVsCylindrical, HeightIncreasesDownwards)
{
    Geometry mesh = Quad();
    mesh.GenerateUVsCylindrical(0, false);
    EXPECT_TRUE(SameFloats(UV(mesh, 0).y, 1.0F));
    EXPECT_TRUE(SameFloats(UV(mesh, 2).y, -0.0F));
}

TEST(GenerateUVsCylindrical, WorldUnitsKeepTheHeight)
{
    Geometry mesh = Quad(0, 0, 1, 8);
    mesh.GenerateUVsCylindrical(0, true);
    EXPECT_TRUE(SameFloats(UV(mesh, 0).y, 4.5F));
    EXPECT_TRUE(SameFloats(UV(mesh, 2).y, -3.5F));
}

TEST(GenerateUVsCylindrical, WidthOfTheBoxDoesNotMatter)
{
    MeshOfBounds flat(Quad(), D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(0, 2, 0));
    flat.GenerateUVsCylindrical(0, false);
    Geometry mesh = Quad();
    mesh.GenerateUVsCylindrical(0, false);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(SameFloats(UV(flat, i), UV(mesh, i)));
}

TEST(GenerateUVsSpherical, HeightIsOneHalfEverywhere)
{
    Geometry mesh = Box24();
    EXPECT_EQ(mesh.GenerateUVsSpherical(0, false), 0);
    for (std::size_t i = 0; i < mesh.VertexArray.size(); ++i)
        EXPECT_TRUE(SameFloats(UV(mesh, i).y, 0.5F));
}

TEST(GenerateUVsSpherical, AngleEqualsThatOfTheCylindricalMapping)
{
    Geometry mesh = Box24();
    mesh.GenerateUVsSpherical(0, false);
    mesh.GenerateUVsCylindrical(1, false);
    for (std::size_t i = 0; i < mesh.VertexArray.size(); ++i)
        EXPECT_TRUE(SameFloats(UV(mesh, i, 0).x, UV(mesh, i, 1).x));
}

TEST(GenerateUVsSpherical, WorldUnitsDoNotMatter)
{
    Geometry mesh = Box24();
    mesh.GenerateUVsSpherical(0, false);
    Geometry inWorldUnits = Box24();
    inWorldUnits.GenerateUVsSpherical(0, true);
    EXPECT_TRUE(SameGeometry(inWorldUnits, mesh));
}

}  // namespace

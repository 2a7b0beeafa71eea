#include <sceneprep/export/gltf/Meshes.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using Importing::Geometry;
using namespace Sceneprep::Gltf;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class GltfMeshes : public testing::Test
{
protected:
    /// Writes a mesh; the result stays valid for the test.
    const MeshArrays* Write(const Geometry& mesh)
    {
        scene_.GeometryLibrary.push_back(mesh);
        return writer_.Find(static_cast<int>(scene_.GeometryLibrary.size() - 1));
    }

    template <typename T>
    std::vector<T> Read(const MeshArrays* arrays, const char* name)
    {
        return written_.Read<T>(arrays->attributes.at(name));
    }

    std::vector<D3DXVECTOR3> Vectors(const MeshArrays* arrays, const char* name)
    {
        return Read<D3DXVECTOR3>(arrays, name);
    }

    Sceneprep::Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
    SceneprepTests::WrittenDocument written_;
    MeshWriter writer_{model_, written_.buffers, written_.document};
};

TEST_F(GltfMeshes, PositionsHaveTheirBounds)
{
    const MeshArrays* arrays = Write(Support::Quad(-1, 0, 1, 2));
    ASSERT_NE(arrays, nullptr);
    const std::vector<D3DXVECTOR3> positions = Vectors(arrays, "POSITION");
    ASSERT_EQ(positions.size(), 4U);
    EXPECT_EQ(positions[0], D3DXVECTOR3(-1, 0, 0));
    const Sceneprep::Json& accessor = written_.Accessor(arrays->attributes.at("POSITION"));
    EXPECT_EQ(accessor["min"], Sceneprep::Json::array({-1, 0, 0}));
    EXPECT_EQ(accessor["max"], Sceneprep::Json::array({1, 2, 0}));
}

TEST_F(GltfMeshes, FewVerticesHaveShortIndicesAndManyLongOnes)
{
    const MeshArrays* few = Write(Support::Quad());
    EXPECT_EQ(written_.Read<std::uint16_t>(few->indices).size(), 6U);
    const MeshArrays* many = Write(Support::Grid(256, 255));  // 257 x 256 = 65,792 vertices
    EXPECT_EQ(written_.Read<std::uint32_t>(many->indices).size(), 256U * 255 * 6);
}

TEST_F(GltfMeshes, TheLargestShortIndexIsNeverUsed)
{
    Geometry mesh;
    mesh.VertexArray.resize(65535);
    mesh.IndexArray = {0, 1, 65534};
    EXPECT_EQ(written_.Read<std::uint16_t>(Write(mesh)->indices)[2], 65534);
    mesh.VertexArray.resize(65536);
    mesh.IndexArray = {0, 1, 65535};
    EXPECT_EQ(written_.Read<std::uint32_t>(Write(mesh)->indices)[2], 65535U);
}

TEST_F(GltfMeshes, NormalsGetUnitLength)
{
    const MeshArrays* arrays = Write(Support::Triangle({0, 3, 4}));
    EXPECT_EQ(Vectors(arrays, "NORMAL")[0], D3DXVECTOR3(0, 0.6F, 0.8F));
    EXPECT_EQ(writer_.Mended().normals, 0U);
}

TEST_F(GltfMeshes, ANormalOfLengthZeroIsReplacedByThatOfAFace)
{
    Geometry mesh = Support::MeshOf({{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {9, 9, 9}}, {0, 1, 2});
    mesh.VertexArray[1].SetNormal({kInfinity, 0, 0});
    const std::vector<D3DXVECTOR3> normals = Vectors(Write(mesh), "NORMAL");
    EXPECT_EQ(normals[0], D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(normals[1], D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(normals[3], D3DXVECTOR3(0, 0, 1)) << "no face uses this vertex";
    EXPECT_EQ(writer_.Mended().normals, 4U);
}

TEST_F(GltfMeshes, AMeshWithoutNormalsStaysWithoutThem)
{
    const MeshArrays* arrays = Write(Support::MeshOf({{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {0, 1, 2}));
    EXPECT_FALSE(arrays->attributes.contains("NORMAL"));
    EXPECT_EQ(writer_.Mended().normals, 0U);
}

TEST_F(GltfMeshes, APinnedMeshIsWrittenUnchanged)
{
    const std::vector<float> points = {0, 0, 0, 1, 2, 3};
    Sceneprep::CarriedAccessor positions = {.componentType = kFloat, .type = "VEC3", .count = 2, .bytes = {}};
    positions.bytes.resize(points.size() * sizeof(float));
    std::memcpy(positions.bytes.data(), points.data(), positions.bytes.size());
    model_.carried.meshOf.resize(1);
    model_.carried.meshOf[0].primitive = {.mode = 1, .attributes = {{"POSITION", positions}}};
    model_.supplement.meshKeys = {0};
    const MeshArrays* arrays = Write(Geometry());
    ASSERT_NE(arrays, nullptr);
    EXPECT_EQ(arrays->mode, 1);
    EXPECT_EQ(arrays->indices, -1);
    EXPECT_EQ(Vectors(arrays, "POSITION")[1], D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfMeshes, TextureCoordinatesCountDownwards)
{
    Geometry mesh = Support::Triangle();
    mesh.VertexArray[0].SetTexCoord({0.25F, 0.25F}, 1);
    mesh.VertexArray[1].SetTexCoord({kNan, 0}, 0);
    const MeshArrays* arrays = Write(mesh);
    const auto first = Read<D3DXVECTOR2>(arrays, "TEXCOORD_0");
    const auto second = Read<D3DXVECTOR2>(arrays, "TEXCOORD_1");
    EXPECT_EQ(second[0], D3DXVECTOR2(0.25F, 0.75F));
    EXPECT_EQ(second[1], D3DXVECTOR2(0, 1)) << "a set that this vertex lacks";
    EXPECT_EQ(first[1], D3DXVECTOR2(0, 1));
    EXPECT_EQ(writer_.Mended().texCoords, 1U);
}

TEST_F(GltfMeshes, TrianglesWithNanOrInfiniteCornersAreDropped)
{
    Geometry mesh = Support::Quad();
    mesh.VertexArray.emplace_back(kNan, 0, 0);
    mesh.VertexArray.emplace_back(0, kInfinity, 0);
    mesh.IndexArray.insert(mesh.IndexArray.end(), {0, 1, 4, 5, 1, 2});
    const MeshArrays* arrays = Write(mesh);
    EXPECT_EQ(written_.Read<std::uint16_t>(arrays->indices).size(), 6U);
    EXPECT_EQ(writer_.Mended().triangles, 2U);
    for (const D3DXVECTOR3& position : Vectors(arrays, "POSITION"))
        EXPECT_TRUE(std::isfinite(position.x) && std::isfinite(position.y));
}

TEST_F(GltfMeshes, AMeshWithoutUsableTrianglesIsNotWritten)
{
    EXPECT_EQ(Write(Geometry()), nullptr);
    Geometry lost = Support::Triangle();
    lost.VertexArray[0].SetPosition(D3DXVECTOR3(kNan, 0, 0));
    EXPECT_EQ(Write(lost), nullptr);
    EXPECT_TRUE(written_.document.accessors.empty());
}

TEST_F(GltfMeshes, AMeshIsWrittenOnce)
{
    scene_.GeometryLibrary.push_back(Support::Triangle());
    const MeshArrays* first = writer_.Find(0);
    EXPECT_EQ(writer_.Find(0), first);
    EXPECT_EQ(written_.document.accessors.size(), 3U) << "positions, normals, indices";
}

TEST_F(GltfMeshes, JointsAndWeightsComeInSetsOfFour)
{
    Geometry mesh = Support::Triangle();
    mesh.JointArray.resize(2);
    mesh.VertexArray[0].AddWeight(1, 2);
    const MeshArrays* arrays = Write(mesh);
    EXPECT_TRUE(arrays->isSkinned);
    const auto joints = Read<std::array<std::uint16_t, 4>>(arrays, "JOINTS_0");
    const auto weights = Read<std::array<float, 4>>(arrays, "WEIGHTS_0");
    EXPECT_EQ(joints[0][0], 1);
    EXPECT_EQ(weights[0][0], 1);
    EXPECT_EQ(writer_.Mended().weights, 3U);
}

TEST_F(GltfMeshes, ASkinWithoutWeightsIsDroppedAndCounted)
{
    Geometry mesh = Support::Triangle();
    mesh.JointArray.resize(2);
    EXPECT_FALSE(Write(mesh)->isSkinned);
    EXPECT_EQ(writer_.Mended().skins, 1U);
}

TEST_F(GltfMeshes, IndicesOutOfRangeThrow)
{
    Geometry mesh = Support::Triangle();
    mesh.IndexArray[2] = 3;
    EXPECT_THROW(Write(mesh), std::out_of_range);
    EXPECT_THROW(writer_.Find(7), std::out_of_range);
}

}  // namespace

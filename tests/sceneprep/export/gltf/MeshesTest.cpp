#include <sceneprep/export/gltf/Meshes.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using Importing::Geometry;
using namespace Sceneprep::Gltf;
using SceneprepTests::ReadArray;

constexpr float kNowhere = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class GltfMeshes : public testing::Test
{
protected:
    /// Writes a mesh; the writer's answer stays valid for the test.
    const MeshArrays* Write(const Geometry& mesh)
    {
        scene_.GeometryLibrary.push_back(mesh);
        return writer_.Find(static_cast<int>(scene_.GeometryLibrary.size() - 1));
    }

    std::vector<D3DXVECTOR3> Vectors(const MeshArrays* arrays, const char* name)
    {
        return ReadArray<D3DXVECTOR3>(model_, arrays->attributes.at(name));
    }

    Importing::SceneContainer scene_;
    tinygltf::Model model_;
    Buffers buffers_{model_};
    MeshWriter writer_{scene_, buffers_, model_};
};

TEST_F(GltfMeshes, PositionsHaveTheirBounds)
{
    const MeshArrays* arrays = Write(Support::Quad(-1, 0, 1, 2));
    ASSERT_NE(arrays, nullptr);
    const std::vector<D3DXVECTOR3> positions = Vectors(arrays, "POSITION");
    ASSERT_EQ(positions.size(), 4U);
    EXPECT_EQ(positions[0], D3DXVECTOR3(-1, 0, 0));
    const tinygltf::Accessor& accessor =
        model_.accessors.at(static_cast<std::size_t>(arrays->attributes.at("POSITION")));
    EXPECT_EQ(accessor.minValues, (std::vector<double>{-1, 0, 0}));
    EXPECT_EQ(accessor.maxValues, (std::vector<double>{1, 2, 0}));
}

TEST_F(GltfMeshes, FewVerticesHaveShortIndicesAndManyLongOnes)
{
    const MeshArrays* few = Write(Support::Quad());
    EXPECT_EQ(ReadArray<std::uint16_t>(model_, few->indices).size(), 6U);
    const MeshArrays* many = Write(Support::Grid(256, 255));  // 257 x 256 = 65,792 vertices
    EXPECT_EQ(ReadArray<std::uint32_t>(model_, many->indices).size(), 256U * 255 * 6);
}

TEST_F(GltfMeshes, TheLastShortIndexIsNeverUsed)
{
    Geometry mesh;
    mesh.VertexArray.resize(65535);
    mesh.IndexArray = {0, 1, 65534};
    EXPECT_EQ(ReadArray<std::uint16_t>(model_, Write(mesh)->indices)[2], 65534);
    mesh.VertexArray.resize(65536);
    mesh.IndexArray = {0, 1, 65535};
    EXPECT_EQ(ReadArray<std::uint32_t>(model_, Write(mesh)->indices)[2], 65535U);
}

TEST_F(GltfMeshes, NormalsAreWrittenAtUnitLength)
{
    const MeshArrays* arrays = Write(Support::Triangle({0, 3, 4}));
    EXPECT_EQ(Vectors(arrays, "NORMAL")[0], D3DXVECTOR3(0, 0.6F, 0.8F));
    EXPECT_EQ(writer_.Mended().normals, 0U);
}

TEST_F(GltfMeshes, ANormalWithoutDirectionIsThatOfAFace)
{
    Geometry mesh = Support::MeshOf({{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {9, 9, 9}}, {0, 1, 2});
    mesh.VertexArray[1].SetNormal({kInfinity, 0, 0});
    const std::vector<D3DXVECTOR3> normals = Vectors(Write(mesh), "NORMAL");
    EXPECT_EQ(normals[0], D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(normals[1], D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(normals[3], D3DXVECTOR3(0, 0, 1)) << "no face uses this vertex";
    EXPECT_EQ(writer_.Mended().normals, 4U);
}

TEST_F(GltfMeshes, TextureCoordinatesCountDownwards)
{
    Geometry mesh = Support::Triangle();
    mesh.VertexArray[0].SetTexCoord({0.25F, 0.25F}, 1);
    mesh.VertexArray[1].SetTexCoord({kNowhere, 0}, 0);
    const MeshArrays* arrays = Write(mesh);
    const auto first = ReadArray<D3DXVECTOR2>(model_, arrays->attributes.at("TEXCOORD_0"));
    const auto second = ReadArray<D3DXVECTOR2>(model_, arrays->attributes.at("TEXCOORD_1"));
    EXPECT_EQ(second[0], D3DXVECTOR2(0.25F, 0.75F));
    EXPECT_EQ(second[1], D3DXVECTOR2(0, 1)) << "a set that this vertex lacks";
    EXPECT_EQ(first[1], D3DXVECTOR2(0, 1));
    EXPECT_EQ(writer_.Mended().texCoords, 1U);
}

TEST_F(GltfMeshes, TrianglesWithCornersNowhereAreLeftOut)
{
    Geometry mesh = Support::Quad();
    mesh.VertexArray.emplace_back(kNowhere, 0, 0);
    mesh.VertexArray.emplace_back(0, kInfinity, 0);
    mesh.IndexArray.insert(mesh.IndexArray.end(), {0, 1, 4, 5, 1, 2});
    const MeshArrays* arrays = Write(mesh);
    EXPECT_EQ(ReadArray<std::uint16_t>(model_, arrays->indices).size(), 6U);
    EXPECT_EQ(writer_.Mended().triangles, 2U);
    for (const D3DXVECTOR3& position : Vectors(arrays, "POSITION"))
        EXPECT_TRUE(std::isfinite(position.x) && std::isfinite(position.y));
}

TEST_F(GltfMeshes, AMeshWithNothingToShowIsNotWritten)
{
    EXPECT_EQ(Write(Geometry()), nullptr);
    Geometry lost = Support::Triangle();
    lost.VertexArray[0].SetPosition(D3DXVECTOR3(kNowhere, 0, 0));
    EXPECT_EQ(Write(lost), nullptr);
    EXPECT_TRUE(model_.accessors.empty());
}

TEST_F(GltfMeshes, AMeshIsWrittenOnce)
{
    scene_.GeometryLibrary.push_back(Support::Triangle());
    const MeshArrays* first = writer_.Find(0);
    EXPECT_EQ(writer_.Find(0), first);
    EXPECT_EQ(model_.accessors.size(), 3U) << "positions, normals, indices";
}

TEST_F(GltfMeshes, JointsAndWeightsComeInSetsOfFour)
{
    Geometry mesh = Support::Triangle();
    mesh.JointArray.resize(2);
    mesh.VertexArray[0].AddWeight(1, 2);
    const MeshArrays* arrays = Write(mesh);
    EXPECT_TRUE(arrays->isSkinned);
    const auto joints = ReadArray<std::array<std::uint16_t, 4>>(model_, arrays->attributes.at("JOINTS_0"));
    const auto weights = ReadArray<std::array<float, 4>>(model_, arrays->attributes.at("WEIGHTS_0"));
    EXPECT_EQ(joints[0][0], 1);
    EXPECT_EQ(weights[0][0], 1);
    EXPECT_EQ(writer_.Mended().weights, 3U);
}

TEST_F(GltfMeshes, ASkinWithoutWeightsIsLeftOutAndCounted)
{
    Geometry mesh = Support::Triangle();
    mesh.JointArray.resize(2);
    EXPECT_FALSE(Write(mesh)->isSkinned);
    EXPECT_EQ(writer_.Mended().skins, 1U);
}

TEST_F(GltfMeshes, IndicesThatLeadNowhereThrow)
{
    Geometry mesh = Support::Triangle();
    mesh.IndexArray[2] = 3;
    EXPECT_THROW(Write(mesh), std::out_of_range);
    EXPECT_THROW(writer_.Find(7), std::out_of_range);
}

}  // namespace

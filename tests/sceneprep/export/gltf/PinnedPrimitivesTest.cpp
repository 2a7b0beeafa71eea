#include <sceneprep/export/gltf/PinnedPrimitives.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

const CarriedAccessor kPosition = {kFloat, "VEC3", false, 1, std::vector<std::uint8_t>(12)};

TEST(GltfPinnedPrimitives, AreWrittenWithModeIndicesAttributesAndTargets)
{
    CarriedPrimitive primitive;
    primitive.mode = 5;
    primitive.indices = CarriedAccessor{kUnsignedByte, "SCALAR", false, 3, {0, 1, 2}};
    primitive.attributes = {{"POSITION", kPosition}};
    primitive.targets = {{{"POSITION", kPosition}}, {}};
    SceneprepTests::WrittenDocument written;
    const MeshArrays arrays = WritePinned(primitive, written.buffers, written.document);
    EXPECT_EQ(arrays.mode, 5);
    EXPECT_EQ(written.Read<std::uint8_t>(arrays.indices), (std::vector<std::uint8_t>{0, 1, 2}));
    ASSERT_EQ(arrays.targets.size(), 2U);
    EXPECT_TRUE(written.Accessor(arrays.attributes["POSITION"]).contains("min"));
    EXPECT_TRUE(written.Accessor(arrays.targets[0]["POSITION"]).contains("max"));
    EXPECT_TRUE(written.document.impliedExtensions.empty());
    EXPECT_FALSE(arrays.isSkinned);
}

TEST(GltfPinnedPrimitives, QuantizedAttributesRequireTheirExtension)
{
    CarriedPrimitive primitive;
    primitive.attributes = {{"POSITION", {kByte, "VEC3", false, 1, {1, 2, 3}}}};
    SceneprepTests::WrittenDocument written;
    WritePinned(primitive, written.buffers, written.document);
    EXPECT_TRUE(written.document.impliedExtensions.contains("KHR_mesh_quantization"));
    EXPECT_TRUE(written.document.requiredExtensions.contains("KHR_mesh_quantization"));
}

}  // namespace

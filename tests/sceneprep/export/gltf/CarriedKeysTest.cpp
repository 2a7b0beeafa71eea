#include <sceneprep/export/gltf/CarriedKeys.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;

TEST(GltfCarriedKeys, RecordsWithoutAKeyHaveNone)
{
    EXPECT_EQ(KeyAt({4, -1}, 0), 4);
    EXPECT_EQ(KeyAt({4, -1}, 1), -1);
    EXPECT_EQ(KeyAt({4, -1}, 2), -1);
    EXPECT_EQ(KeyAt({4, -1}, -1), -1);
}

TEST(GltfCarriedKeys, KeysReferToCarriedRecords)
{
    Model model;
    model.supplement.nodeKeys = {-1, 0, 7};
    model.carried.nodes.resize(1);
    EXPECT_EQ(CarriedNodeOf(model, 0), nullptr);
    EXPECT_EQ(CarriedNodeOf(model, 1), model.carried.nodes.data());
    EXPECT_EQ(CarriedNodeOf(model, 2), nullptr) << "there is no such entry";
    model.supplement.meshKeys = {0};
    model.carried.meshOf.resize(1);
    EXPECT_EQ(CarriedMeshOf(model, 0), model.carried.meshOf.data());
    EXPECT_EQ(CarriedMeshOf(model, 1), nullptr);
}

TEST(GltfCarriedKeys, PointersAreSplit)
{
    const EntryPointer material = SplitPointer("/materials/12/pbrMetallicRoughness/metallicFactor");
    EXPECT_EQ(material.list, "/materials/");
    EXPECT_EQ(material.index, 12);
    EXPECT_EQ(material.rest, "/pbrMetallicRoughness/metallicFactor");
    EXPECT_EQ(SplitPointer("/extensions/KHR_lights_punctual/lights/1/color").index, 1);
    for (const char* other : {"", "/materials/", "/materials/x/a", "/materials/3", "/scenes/0/a"})
        EXPECT_EQ(SplitPointer(other).list, "") << other;
}

TEST(GltfCarriedKeys, ClipsAnimateNodesAndMaterials)
{
    Carried carried;
    carried.clips.resize(1);
    carried.clips[0].channels = {{.node = 3, .path = "scale"},
                                 {.node = 4, .path = "weights"},
                                 {.path = "pointer", .pointer = "/nodes/5/translation"},
                                 {.path = "pointer", .pointer = "/nodes/6/weights"},
                                 {.path = "pointer", .pointer = "/materials/7/alphaCutoff"}};
    const AnimatedKeys keys = FindAnimatedKeys(carried);
    EXPECT_THAT(keys.nodes, ElementsAre(3, 5));
    EXPECT_THAT(keys.materials, ElementsAre(7));
}

}  // namespace

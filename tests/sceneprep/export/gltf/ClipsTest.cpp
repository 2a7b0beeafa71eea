#include <sceneprep/export/gltf/Clips.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;

class GltfClips : public SceneprepTests::BuiltModel
{
protected:
    GltfClips()
    {
        mill_ = AddCarried(R"({"name": "Mill"})", 0);
        model_.carried.accessors.push_back({kFloat, "SCALAR", false, 2, {0, 0, 0, 0, 0, 0, 128, 63}});
        model_.carried.accessors.push_back({kFloat, "VEC3", false, 2, std::vector<std::uint8_t>(24)});
    }

    CarriedClip& AddClip(const std::string& name, std::vector<CarriedChannel> channels)
    {
        CarriedClip clip;
        clip.object["name"] = name;
        clip.channels = std::move(channels);
        clip.samplers = {{0, 1, "STEP"}};
        model_.carried.clips.push_back(clip);
        return model_.carried.clips.back();
    }

    int mill_;
};

TEST_F(GltfClips, AClipIsWrittenUnchanged)
{
    CarriedClip& clip = AddClip("Turn", {{.node = 0, .path = "translation", .extras = "x"}});
    clip.object["extras"] = 1;
    const Document& document = Build();
    EXPECT_EQ(document.animations.at(0), Json::parse(R"({"name": "Turn", "extras": 1,
        "channels": [{"sampler": 0, "target": {"node": 1, "path": "translation"}, "extras": "x"}],
        "samplers": [{"input": 0, "interpolation": "STEP", "output": 1}]})"));
    EXPECT_EQ(document.accessors[0]["min"], Json::array({0}));
    EXPECT_EQ(document.accessors[0]["max"], Json::array({1}));
}

TEST_F(GltfClips, ClipsShareTheirAccessors)
{
    AddClip("A", {{.node = 0, .path = "translation"}, {.node = 0, .path = "scale"}});
    AddClip("B", {{.node = 0, .path = "translation"}});
    const Document& document = Build();
    EXPECT_EQ(document.animations.size(), 2U);
    EXPECT_EQ(document.animations[0]["samplers"].size(), 1U);
    EXPECT_EQ(document.accessors.size(), 2U);
}

TEST_F(GltfClips, ChannelsWithoutTheirTargetAreDroppedAndReported)
{
    AddClip("A", {{.node = 0, .path = "translation"}, {.node = 5, .path = "scale"}, {.node = 0, .path = "weights"}});
    AddClip("B", {{.node = 5, .path = "scale"}});
    const Document& document = Build();
    ASSERT_EQ(document.animations.size(), 1U);
    EXPECT_EQ(document.animations[0]["channels"].size(), 1U);
    EXPECT_THAT(Notes(), ElementsAre("dropped animation channels whose targets are not in the result, of the clips "
                                     "'A', 'B' (3)"));
    EXPECT_EQ(built_.notes.All()[0].loss, "animation-channels");
}

TEST_F(GltfClips, PointersReferToTheWrittenObjects)
{
    model_.carried.materials = {Json::object(), Json::parse(R"({"name": "used"})")};
    CarriedMaterial carried;
    carried.material = 1;
    model_.carried.materialOf = {carried};
    scene_.MaterialLibrary.resize(1);
    SurfaceAt(AddSurface(mill_)).SetMaterialID(0);
    AddClip("A", {{.path = "pointer", .pointer = "/materials/1/emissiveFactor"},
                  {.path = "pointer", .pointer = "/nodes/0/rotation"},
                  {.path = "pointer", .pointer = "/materials/0/emissiveFactor"}});
    const Document& document = Build();
    const Json& channels = document.animations.at(0)["channels"];
    ASSERT_EQ(channels.size(), 2U) << "the material 0 is not written";
    EXPECT_EQ(channels[0]["target"], Json::parse(R"({"path": "pointer",
        "extensions": {"KHR_animation_pointer": {"pointer": "/materials/0/emissiveFactor"}}})"));
    EXPECT_EQ(channels[1]["target"]["extensions"]["KHR_animation_pointer"]["pointer"], "/nodes/1/rotation");
}

}  // namespace

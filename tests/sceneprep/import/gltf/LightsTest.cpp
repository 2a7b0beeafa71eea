#include <sceneprep/import/gltf/Lights.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using Importing::Light;

Light Convert(const std::string& text)
{
    const Json json = Json::parse(text);
    return ConvertLight(Field(json, {}));
}

TEST(Lights, ColoursAreMultipliedByTheIntensity)
{
    Light light = Convert(R"({"name":"Sun","type":"directional","color":[1,0.5,0],"intensity":4})");
    EXPECT_EQ(light.GetName(), "Sun");
    EXPECT_EQ(light.GetType(), Light::LightType::Directional);
    EXPECT_EQ(light.GetDiffuse().g, 2);
    EXPECT_EQ(light.GetAttenuation().x, 1);
    EXPECT_EQ(FrameFromOffset(light.GetOffsetMatrix().GetMatrix()).forward.z, -1);
    EXPECT_EQ(light.GetRange(), Light().GetRange());
}

TEST(Lights, SpotsHaveCones)
{
    Light light = Convert(R"({"type":"spot","range":7,"spot":{"innerConeAngle":0.25}})");
    EXPECT_EQ(light.GetTheta(), 0.25F);
    EXPECT_NEAR(light.GetPhi(), 0.785398, 1e-5);
    EXPECT_EQ(light.GetRange(), 7);
    EXPECT_EQ(light.GetAttenuation().z, 1);
}

TEST(Lights, PointsHaveNoDirection)
{
    Light light = Convert(R"({"type":"point"})");
    EXPECT_EQ(light.GetDiffuse().b, 1);
    EXPECT_EQ(light.GetOffsetMatrix().GetMatrix()._33, 1);
}

TEST(Lights, InvalidReferencesAreRefused)
{
    const auto problem = [](const std::string& lights) {
        return GltfDocument::Parse(R"({"extensions":{"KHR_lights_punctual":{"lights":)" + lights +
                                   R"(}},"nodes":[{"extensions":{"KHR_lights_punctual":{"light":0}}}]})")
            .Problem();
    };
    EXPECT_EQ(problem("[]"), "nodes[0].extensions.KHR_lights_punctual.light: 0 is not below 0");
    EXPECT_EQ(problem(R"([{"type":"lamp"}])"),
              "extensions.KHR_lights_punctual.lights[0].type: 'lamp' is not a type of lights");
}

}  // namespace

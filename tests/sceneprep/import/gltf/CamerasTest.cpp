#include <sceneprep/import/gltf/Cameras.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

Importing::Camera Convert(const std::string& text)
{
    const Json json = Json::parse(text);
    return ConvertCamera(Field(json, {}));
}

TEST(Cameras, PerspectiveOnesHaveFieldsOfView)
{
    Importing::Camera camera = Convert(R"({"name":"Eye","type":"perspective",
        "perspective":{"yfov":1.5707963267948966,"aspectRatio":2,"znear":0.5,"zfar":20}})");
    EXPECT_EQ(camera.GetName(), "Eye");
    EXPECT_NEAR(camera.GetFovY(), 90, 1e-4);
    EXPECT_NEAR(camera.GetFovX(), 126.869898, 1e-4);
    EXPECT_EQ(camera.GetNearZ(), 0.5F);
    EXPECT_EQ(camera.GetFarZ(), 20);
    const CameraFrame frame = FrameFromOffset(camera.GetOffsetMatrix().GetMatrix());
    EXPECT_EQ(frame.forward.z, -1);
    EXPECT_EQ(frame.up.y, 1);
}

TEST(Cameras, MayHaveNeitherAspectRatioNorFarPlane)
{
    Importing::Camera camera = Convert(R"({"type":"perspective","perspective":{"yfov":1,"znear":0.5}})");
    EXPECT_EQ(camera.GetFovX(), camera.GetFovY());
    EXPECT_EQ(camera.GetFarZ(), 500000);
}

TEST(Cameras, OrthographicOnesKeepTheDefaultFields)
{
    Importing::Camera camera =
        Convert(R"({"type":"orthographic","orthographic":{"xmag":1,"ymag":1,"znear":0.25,"zfar":8}})");
    EXPECT_EQ(camera.GetFovX(), Importing::Camera().GetFovX());
    EXPECT_EQ(camera.GetNearZ(), 0.25F);
    EXPECT_EQ(camera.GetFarZ(), 8);
}

TEST(Cameras, OfOtherTypesAreRefused)
{
    const auto problem = [](const std::string& camera) {
        return GltfDocument::Parse(R"({"nodes":[{"camera":0}],"cameras":[)" + camera + "]}").Problem();
    };
    EXPECT_EQ(problem(R"({"type":"fish"})"), "cameras[0].type: 'fish' is neither perspective nor orthographic");
    EXPECT_EQ(problem(R"({"type":"perspective","perspective":{"znear":1}})"),
              "cameras[0].perspective.yfov: is missing");
    EXPECT_EQ(problem("{}"), "cameras[0].type: is missing");
}

}  // namespace

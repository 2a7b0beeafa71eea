#include <sceneprep/import/gltf/SurfaceValues.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

TEST(SurfaceValues, AreMovedToTheSurface)
{
    Json object = Json::parse(R"({"extras":{"collisionOffset":-3,"surfaceName":"Roof","other":1}})");
    EXPECT_TRUE(HasSurfaceValues(object));
    Importing::Surface surface;
    TakeSurfaceValues(object, surface);
    EXPECT_EQ(surface.GetCollisionOffset(), -3);
    EXPECT_EQ(surface.GetName(), "Roof");
    EXPECT_EQ(object.dump(), R"({"extras":{"other":1}})");
    EXPECT_FALSE(HasSurfaceValues(object));
}

TEST(SurfaceValues, ExtrasThatBecomeEmptyAreRemoved)
{
    Json object = Json::parse(R"({"extras":{"collisionOffset":2}})");
    Importing::Surface surface;
    TakeSurfaceValues(object, surface);
    EXPECT_EQ(object.dump(), "{}");
}

TEST(SurfaceValues, OfOtherTypesStay)
{
    for (const std::string text : {R"({"extras":"collisionOffset"})", R"({"extras":{"collisionOffset":0.5}})",
                                   R"({"extras":{"surfaceName":7}})", R"({"extras":{"collisionOffset":1e10}})", "{}"})
    {
        Json object = Json::parse(text);
        EXPECT_FALSE(HasSurfaceValues(object)) << text;
        Importing::Surface surface;
        TakeSurfaceValues(object, surface);
        EXPECT_EQ(surface.GetCollisionOffset(), 0) << text;
        EXPECT_EQ(object.dump(), Json::parse(text).dump());
    }
}

TEST(SurfaceValues, AreReadFromPrimitivesAndFromNodes)
{
    GltfDocument document;
    document.AddTriangle()["extras"] = {{"collisionOffset", 4}};
    document.json["nodes"][0]["extras"] = {{"surfaceName", "Roof"}, {"other", 1}};
    const Model model = document.Read();
    Importing::Surface surface = model.scene->SurfaceLibrary.at(0);
    EXPECT_EQ(surface.GetCollisionOffset(), 4);
    EXPECT_EQ(surface.GetName(), "Roof");
    EXPECT_TRUE(model.carried.materialOf.at(0).primitive.empty());
    EXPECT_EQ(model.carried.nodes.at(0).object["extras"].dump(), R"({"other":1})");
}

}  // namespace

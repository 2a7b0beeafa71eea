#include <sceneprep/import/gltf/Pointers.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

TEST(Pointers, NameAListAndAnIndex)
{
    EXPECT_EQ(IndexInPointer("/materials/3/alphaCutoff", "/materials/"), 3U);
    EXPECT_EQ(IndexInPointer("/materials/12", "/materials/"), 12U);
    EXPECT_FALSE(IndexInPointer("/materials/x", "/materials/"));
    EXPECT_FALSE(IndexInPointer("/nodes/3", "/materials/"));
    EXPECT_FALSE(IndexInPointer("/materials/3x", "/materials/"));
}

TEST(Pointers, AreFoundInAllAnimations)
{
    const Json json = Json::parse(R"({"animations":[{"channels":[{"target":{"node":0,"path":"scale"}}]},{"channels":[
        {"target":{"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":"/nodes/0/scale"}}}}]}]})");
    EXPECT_THAT(AnimationPointers(Field(json, {})), testing::ElementsAre("/nodes/0/scale"));
}

}  // namespace

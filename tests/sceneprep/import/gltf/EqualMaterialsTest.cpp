#include <sceneprep/import/gltf/EqualMaterials.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

std::vector<int> EqualOnes(const std::string& text)
{
    const Json json = Json::parse(text);
    return FindEqualMaterials(Field(json, {}));
}

TEST(EqualMaterials, AgreeInEverything)
{
    EXPECT_THAT(EqualOnes(R"({"materials":[{"name":"a"},{"name":"b"},{"name":"a"},{"name":"a","doubleSided":true}]})"),
                ElementsAre(0, 1, 0, 3));
}

TEST(EqualMaterials, MayUseEqualTextures)
{
    EXPECT_THAT(EqualOnes(R"({"images":[{"uri":"a"},{"uri":"a"},{"uri":"b"}],"samplers":[{},{"wrapS":33071},{}],
        "textures":[{"source":0,"sampler":0},{"source":1,"sampler":2},{"source":0,"sampler":1},{"source":2}],
        "materials":[{"normalTexture":{"index":0}},{"normalTexture":{"index":1}},{"normalTexture":{"index":2}},
        {"normalTexture":{"index":3}}]})"),
                ElementsAre(0, 0, 2, 3));
}

TEST(EqualMaterials, DoNotIncludeAnimatedOnes)
{
    EXPECT_THAT(EqualOnes(R"({"materials":[{},{},{}],"animations":[{"channels":[{"target":{"path":"pointer",
        "extensions":{"KHR_animation_pointer":{"pointer":"/materials/1/alphaCutoff"}}}}]}]})"),
                ElementsAre(0, 1, 0));
}

}  // namespace

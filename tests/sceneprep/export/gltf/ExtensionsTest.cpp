#include <sceneprep/export/gltf/Extensions.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep::Gltf;

TEST(GltfExtensions, AModelListsEachExtensionOnce)
{
    tinygltf::Model model;
    tinygltf::Material first;
    tinygltf::Material second;
    AddExtension("KHR_a", tinygltf::Value(1), model, first.extensions);
    AddExtension("KHR_a", tinygltf::Value(2), model, second.extensions);
    DeclareExtension("KHR_b", model);
    EXPECT_EQ(model.extensionsUsed, (std::vector<std::string>{"KHR_a", "KHR_b"}));
    EXPECT_EQ(first.extensions.at("KHR_a").GetNumberAsInt(), 1);
    EXPECT_EQ(second.extensions.at("KHR_a").GetNumberAsInt(), 2);
}

}  // namespace

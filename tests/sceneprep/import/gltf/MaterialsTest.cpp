#include <sceneprep/import/gltf/Materials.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

TEST(Materials, AreSharedByPrimitivesThatAgree)
{
    GltfDocument document;
    document.AddTriangle()["material"] = 0;
    Json& primitives = document.json["meshes"][0]["primitives"];
    const Json first = primitives[0];
    for (int i = 0; i < 4; ++i)
        primitives.push_back(first);
    primitives[1]["material"] = 1;
    primitives[2]["extras"] = "note";
    primitives[3].erase("material");
    document.json["materials"] = {{{"name", "Red"}}, {{"name", "Red"}}};
    const Model model = document.Read();
    std::vector<int> used;
    for (const Importing::Surface& surface : model.scene->SurfaceLibrary)
        used.push_back(surface.GetMaterialID());
    EXPECT_THAT(used, testing::ElementsAre(0, 0, 1, 2, 0));
    ASSERT_EQ(model.carried.materialOf.size(), 3U);
    EXPECT_EQ(model.carried.materialOf[1].material, 0);
    EXPECT_EQ(model.carried.materialOf[1].primitive.dump(), R"({"extras":"note"})");
    EXPECT_EQ(model.carried.materialOf[2].material, -1);
    EXPECT_EQ(model.scene->MaterialLibrary.at(0).GetName(), "Red");
    EXPECT_EQ(model.scene->MaterialLibrary.at(2).GetName(), "Default material");
    EXPECT_EQ(model.scene->MaterialLibrary.at(2).GetDiffuse().r, 1);
    EXPECT_EQ(model.carried.materials.size(), 2U);
}

TEST(Materials, InvalidReferencesAreRefused)
{
    GltfDocument document;
    document.AddTriangle()["material"] = 2;
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].material: 2 is not below 0");
}

}  // namespace

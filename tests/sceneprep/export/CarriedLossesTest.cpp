#include <sceneprep/export/CarriedLosses.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> LossesOf(const Model& model)
{
    Notes notes;
    AddCarriedLosses(model, notes);
    std::vector<std::string> losses;
    for (const Note& note : notes.All())
        losses.push_back(note.loss + ": " + note.text);
    return losses;
}

Model ModelWithMaterial(const char* json)
{
    Model model;
    model.carried.materials.push_back(Json::parse(json));
    model.carried.materialOf.push_back({.material = 0});
    return model;
}

TEST(CarriedLosses, AnEmptyModelLosesNothing) { EXPECT_THAT(LossesOf(Model()), IsEmpty()); }

TEST(CarriedLosses, APlainMaterialLosesNothing)
{
    EXPECT_THAT(LossesOf(ModelWithMaterial(R"({"pbrMetallicRoughness": {"metallicFactor": 0}})")), IsEmpty());
}

TEST(CarriedLosses, MaterialsOfGltfAreMetalsByDefaultAndOthersAreNot)
{
    EXPECT_THAT(LossesOf(ModelWithMaterial("{}")),
                ElementsAre("metalness: metallic materials become non-metallic (1)"));
    Model other;
    other.carried.materialOf.push_back({.patch = Json::object()});
    EXPECT_THAT(LossesOf(other), IsEmpty());
    other.carried.materialOf.front().patch = Json::parse(R"({"pbrMetallicRoughness": {"metallicFactor": 0.5}})");
    EXPECT_THAT(LossesOf(other), ElementsAre("metalness: metallic materials become non-metallic (1)"));
}

TEST(CarriedLosses, EveryPropertyOfAMaterialIsNamed)
{
    const Model model = ModelWithMaterial(R"({
        "doubleSided": true, "alphaMode": "MASK", "pbrMetallicRoughness": {"metallicFactor": 0},
        "extensions": {"KHR_materials_unlit": {}, "KHR_materials_sheen": {}, "KHR_materials_specular": {}}})");
    EXPECT_THAT(LossesOf(model),
                ElementsAre("alpha-cutouts: alpha cut-outs of materials are dropped (1)",
                            "double-sided: double-sided materials become one-sided (1)",
                            "unlit: unlit materials become lit (1)",
                            "material-layers: materials lose layers such as clear coat, sheen and transmission (1)"));
}

TEST(CarriedLosses, AttributesAreCountedByMesh)
{
    Model model;
    model.supplement.layouts = {{1, {{"COLOR_0", 1, 4}}}, {1, {{"COLOR_0", 1, 4}, {"TANGENT", 3, 4}}}, {}};
    EXPECT_THAT(LossesOf(model), ElementsAre("vertex-colours: vertex colours are dropped, in meshes (2)",
                                             "tangents: tangents are dropped, in meshes (1)"));
}

TEST(CarriedLosses, MorphTargetsPointsAndLinesAreCountedApart)
{
    Model model;
    model.carried.meshOf.resize(3);
    model.carried.meshOf[0].primitive.emplace().targets.resize(1);
    model.carried.meshOf[1].primitive.emplace().mode = 1;
    EXPECT_THAT(LossesOf(model), ElementsAre("morph-targets: morph targets are dropped, in meshes (1)",
                                             "points-and-lines: meshes of points or lines are dropped (1)"));
}

TEST(CarriedLosses, ObjectsLoseWhatOnlyGltfHolds)
{
    Model model;
    model.carried.cameras.push_back(Json::parse(R"({"type": "orthographic"})"));
    model.carried.cameraOf.push_back({.object = 0});
    model.carried.clips.resize(2);
    model.carried.nodes.resize(1);
    model.carried.nodes[0].object = Json::parse(R"({"name": "Door", "extras": {"open": true}})");
    EXPECT_THAT(LossesOf(model), ElementsAre("orthographic-cameras: orthographic cameras become perspective ones (1)",
                                             "clips: each node keeps the first animation that moves it; clips (2)",
                                             "node-extras: extras and extensions of nodes are dropped (1)"));
}

}  // namespace

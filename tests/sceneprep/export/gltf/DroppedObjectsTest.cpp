#include <sceneprep/export/gltf/DroppedObjects.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;
using testing::IsEmpty;

/// A scene of carried nodes and meshes, of which tests remove some.
class GltfDroppedObjects : public SceneprepTests::BuiltModel
{
protected:
    /// Makes a geometry the only primitive of a mesh of the input.
    void CarryMesh(int geometry, const std::string& object)
    {
        model_.supplement.meshKeys.resize(scene_.GeometryLibrary.size(), -1);
        model_.supplement.meshKeys[static_cast<std::size_t>(geometry)] = static_cast<int>(model_.carried.meshOf.size());
        model_.carried.meshOf.emplace_back().mesh = static_cast<int>(model_.carried.meshes.size());
        model_.carried.meshes.push_back(Json::parse(object));
    }

    void RemoveLastNode() { NodeAt(0).ChildList.pop_back(); }

    std::vector<std::pair<std::string, std::string>> Losses()
    {
        Build();
        std::vector<std::pair<std::string, std::string>> losses;
        for (const Note& note : built_.notes.All())
            losses.emplace_back(note.loss, note.text);
        return losses;
    }
};

TEST_F(GltfDroppedObjects, NothingIsLostWhileNodesAndMeshesAreWritten)
{
    AddCarried(R"({"extras": 1, "extensions": {"X": {}}})", 0);
    CarryMesh(0, R"({"extras": 2})");
    AddSurface(1);
    EXPECT_THAT(Losses(), IsEmpty());
}

TEST_F(GltfDroppedObjects, ExtrasAndExtensionsOfDroppedNodesAreCounted)
{
    for (const char* object : {R"({"extras": 1})", R"({"extras": 2, "extensions": {"X": {}, "Y": {}}})",
                               R"({"name": "plain", "extensions": {"X": {}}})"})
    {
        AddCarried(object, 0);
        RemoveLastNode();
    }
    EXPECT_THAT(Losses(),
                ElementsAre(std::pair("node-extras", "dropped the extras of nodes that were collapsed (2)"),
                            std::pair("extension X", "dropped the extension X of nodes that were collapsed (2)"),
                            std::pair("extension Y", "dropped the extension Y of nodes that were collapsed (1)")));
}

TEST_F(GltfDroppedObjects, AVisibleNodeThatCollapsesLosesNothing)
{
    AddCarried(R"({"extensions": {"KHR_node_visibility": {"visible": true}}})", 0);
    RemoveLastNode();
    EXPECT_THAT(Losses(), IsEmpty());
}

TEST_F(GltfDroppedObjects, AMergedMeshIsCountedOnceAlsoIfAnotherUseOfItRemains)
{
    CarryMesh(0, R"({"extras": 2, "extensions": {"X": {}}})");
    AddSurface(0);
    model_.supplement.mergedMeshKeys = {0, 0};
    EXPECT_THAT(Losses(),
                ElementsAre(std::pair("mesh-extras", "dropped the extras of meshes that were merged (1)"),
                            std::pair("extension X", "dropped the extension X of meshes that were merged (1)")));
}

TEST_F(GltfDroppedObjects, AMeshThatIsNotWrittenIsCounted)
{
    CarryMesh(0, R"({"extras": 2})");
    EXPECT_THAT(Losses(), ElementsAre(std::pair("mesh-extras", "dropped the extras of meshes that were merged (1)")));
}

}  // namespace

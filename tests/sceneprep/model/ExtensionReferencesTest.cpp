#include <sceneprep/model/ExtensionReferences.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;

std::vector<int> Visited(void (*visitAll)(Json&, const ReferenceVisitor&), const std::string& text)
{
    Json extensions = Json::parse(text);
    std::vector<int> visited;
    visitAll(extensions, [&](Json& index) {
        visited.push_back(index.get<int>());
        index = 99;
    });
    const std::string after = extensions.dump();
    for (const int index : visited)
    {
        for (const char* end : {",", "}"})
            EXPECT_EQ(after.find(":" + std::to_string(index) + end), std::string::npos);
    }
    return visited;
}

TEST(ExtensionReferences, OfMeshesLeadToAccessors)
{
    EXPECT_THAT(Visited(VisitAccessorReferences, R"({"EXT_mesh_manifold":{"manifoldPrimitive":{"indices":2,"mode":4444,
        "attributes":{"POSITION":3}},"mergeIndices":5,"mergeValues":6}})"),
                testing::UnorderedElementsAre(2, 3, 5, 6));
    EXPECT_THAT(Visited(VisitAccessorReferences, R"({"EXT_mesh_features":{"featureIds":[{"attribute":1}]}})"),
                testing::IsEmpty());
}

TEST(ExtensionReferences, ReferencesThatWereReplacedAreVisitedAgain)
{
    Json extensions = Json::parse(R"({"A":{"bufferView":1}})");
    VisitBufferViewReferences(extensions, [](Json& index) { index = 5; });
    std::vector<int> visited;
    VisitBufferViewReferences(extensions, [&](Json& index) { visited.push_back(index.get<int>()); });
    EXPECT_THAT(visited, testing::ElementsAre(5));
}

TEST(ExtensionReferences, OfDocumentsLeadToBufferViews)
{
    EXPECT_THAT(Visited(VisitBufferViewReferences, R"({"A":{"list":[{"bufferView":1},{"bufferView":2}],"values":555},
        "EXT_structural_metadata":{"schema":{"enums":{"values":[{"value":777}]}},"propertyTables":[{"count":888,
        "properties":{"p":{"values":3,"arrayOffsets":4,"stringOffsets":5}}}]}})"),
                testing::UnorderedElementsAre(1, 2, 3, 4, 5));
}

}  // namespace

#include <sceneprep/export/gltf/MeshArrays.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/Models.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(GltfMeshArrays, CountTheirTextureCoordinateSets)
{
    MeshArrays arrays;
    EXPECT_EQ(arrays.CountTexCoords(), 0U);
    arrays.attributes = {{"POSITION", 0}, {"TEXCOORD_0", 1}, {"TEXCOORD_1", 2}};
    EXPECT_EQ(arrays.CountTexCoords(), 2U);
}

TEST(GltfMeshArrays, MendedValuesAreReportedWithTheirCount)
{
    Notes notes;
    MendedValues mended;
    mended.AddNotes(notes);
    EXPECT_THAT(SceneprepTests::TextsOf(notes), IsEmpty());
    mended.triangles = 2;
    mended.texCoords = 3;
    mended.AddNotes(notes);
    EXPECT_THAT(SceneprepTests::TextsOf(notes),
                ElementsAre("dropped triangles with NaN or infinite positions (2)",
                            "replaced NaN and infinite texture coordinates by (0, 0) (3)"));
    EXPECT_EQ(notes.All()[0].loss, "triangles");
    EXPECT_EQ(notes.All()[1].loss, "");
}

}  // namespace

#include <sceneprep/Verification.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/compare/TwoTriangles.h>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A verification of a file in a folder of its own.
class VerificationTest : public testing::Test
{
protected:
    VerificationTest()
    {
        command_.output = folder_ / "final.gltf";
        std::filesystem::create_directory(folder_ / "temporary");
    }

    /// Compares a changed document with the two triangles.
    std::vector<Difference> Check(const GltfDocument& written)
    {
        Verification verification(command_);
        verification.RecordInput({.model = TwoTriangles().Read()});
        std::ostringstream out;
        Progress progress(out, false);
        verification.CheckFile(folder_.Write("temporary/final.gltf", written.Text()), progress);
        compared_ = verification.Result().compared;
        return verification.Result().differences;
    }

    TemporaryFolder folder_;
    PrepareCommand command_;
    std::vector<std::string> compared_;
};

TEST_F(VerificationTest, ReadsTheFileAndComparesIt)
{
    EXPECT_THAT(Check(TwoTriangles()), IsEmpty());
    EXPECT_THAT(compared_, testing::Contains(HasSubstr("2 triangles: positions")));
    GltfDocument changed = TwoTriangles();
    changed.json["nodes"][1].erase("mesh");
    ASSERT_EQ(Check(changed).size(), 1U);
    EXPECT_EQ(Check(changed)[0].kind, "triangles");
    EXPECT_EQ(Check(changed)[0].name, "Red");
}

TEST_F(VerificationTest, AFileThatCannotBeReadIsADifference)
{
    GltfDocument broken = TwoTriangles();
    broken.json["nodes"][1]["mesh"] = 17;
    const std::vector<Difference> differences = Check(broken);
    ASSERT_EQ(differences.size(), 1U);
    EXPECT_EQ(differences[0].kind, "unreadable");
    EXPECT_THAT(differences[0].text, HasSubstr("nodes[1].mesh"));
}

/// The two triangles with other normals and windings.
GltfDocument Changed(const char* attribute)
{
    GltfDocument document = TwoTriangles();
    if (attribute == std::string("NORMAL"))
        document.json["meshes"][1]["primitives"][0]["attributes"]["NORMAL"] =
            document.Accessor<float>({1, 0, 0, 1, 0, 0, 1, 0, 0}, "VEC3", 3);
    else if (attribute == std::string("TEXCOORD_0"))
        document.json["meshes"][1]["primitives"][0]["attributes"]["TEXCOORD_0"] =
            document.Accessor<float>({0, 0, 1, 0, 0, 1}, "VEC2", 2);
    else
        document.json["meshes"][1]["primitives"][0]["indices"] =
            document.Accessor<std::uint16_t>({0, 2, 1}, "SCALAR", 1);
    return document;
}

TEST_F(VerificationTest, WhatStepsChangeOnPurposeIsNoDifference)
{
    for (const char* attribute : {"NORMAL", "TEXCOORD_0", "winding"})
    {
        command_.steps = {};
        EXPECT_EQ(Check(Changed(attribute)).size(), 1U) << attribute;
    }
    command_.steps.normals = true;
    EXPECT_THAT(Check(Changed("NORMAL")), IsEmpty());
    command_.steps = {};
    command_.steps.uvs = {{"cubic", 1, false}};
    EXPECT_EQ(Check(Changed("TEXCOORD_0")).size(), 1U);
    command_.steps.uvs = {{"cubic", 0, false}};
    EXPECT_THAT(Check(Changed("TEXCOORD_0")), IsEmpty());
    command_.steps = {};
    command_.steps.fixCulling = true;
    EXPECT_THAT(Check(Changed("winding")), IsEmpty());
}

TEST_F(VerificationTest, FormatsThatCannotBeReadAreNotVerified)
{
    for (const char* extension : {"stp", "json", "assxml", "x3d"})
    {
        command_.output = folder_ / (std::string("final.") + extension);
        Verification verification(command_);
        EXPECT_FALSE(verification.ReadsOutput()) << extension;
        EXPECT_EQ(verification.Result().reason, std::string("sceneprep cannot read .") + extension + " files");
    }
}

TEST_F(VerificationTest, CanBeSkipped)
{
    command_.verify = false;
    Verification verification(command_);
    verification.RecordInput({.model = TwoTriangles().Read()});
    EXPECT_FALSE(verification.ReadsOutput());
    EXPECT_EQ(verification.Result().reason, "--no-verify skips it");
    EXPECT_EQ(verification.Before().drawCalls, 2U);
}

TEST_F(VerificationTest, RecordsTheBytesOfTheInputFiles)
{
    const auto buffer = folder_.Write("data.bin", "12345");
    const auto image = folder_.Write("wood.png", "123");
    Verification verification(command_);
    verification.RecordInput({.model = TwoTriangles().Read(), .files = {buffer, image, folder_ / "absent.png"}});
    EXPECT_EQ(verification.Before().fileBytes, 8U);
}

}  // namespace

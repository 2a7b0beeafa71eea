#include <golden/GoldenScene.h>
#include <golden/SceneBits.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// Compares a processed scene with one file of expected bits, for every compiler, build type and platform.

namespace
{

std::vector<std::string> Lines(std::istream& stream)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> ExpectedLines()
{
    std::ifstream file(GOLDEN_FILE);
    return Lines(file);
}

/// Writes the actual bits to a file, to compare them or to replace the golden file after an intended change.
void Keep(const std::string& text)
{
    std::ofstream file(GOLDEN_OUTPUT, std::ios::binary);
    file << text;
}

TEST(Golden, ProcessedSceneHasTheSameBitsEverywhere)
{
    Importing::SceneContainer scene = Golden::ProcessedScene();
    const std::string text = Golden::SceneBits(scene);
    Keep(text);

    std::istringstream stream(text);
    const std::vector<std::string> actual = Lines(stream);
    const std::vector<std::string> expected = ExpectedLines();
    ASSERT_FALSE(expected.empty()) << "cannot read " << GOLDEN_FILE;
    for (std::size_t i = 0; i < actual.size() && i < expected.size(); ++i)
        ASSERT_EQ(actual[i], expected[i])
            << GOLDEN_FILE << ":" << i + 1 << " differs; all of it is in " << GOLDEN_OUTPUT;
    EXPECT_EQ(actual.size(), expected.size());
}

TEST(Golden, SceneIsLargeEnoughAndHasNoNaN)
{
    Importing::SceneContainer scene = Golden::ProcessedScene();
    std::size_t vertices = 0;
    for (const Importing::Geometry& mesh : scene.GeometryLibrary)
        vertices += mesh.VertexArray.size();
    EXPECT_GT(vertices, 200U);
    EXPECT_GT(scene.NodeLibrary.size(), 4U);

    // The sign and payload of a NaN differ between platforms, so the scene must not contain one.
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    scene.GetBoundingBox(min, max);
    EXPECT_LT(min.x, max.x);
    const std::string text = Golden::SceneBits(scene);
    for (const char* notANumber : {" 7fc", " ffc", " 7f8", " ff8"})
        EXPECT_EQ(text.find(notANumber), std::string::npos) << notANumber;
}

}  // namespace

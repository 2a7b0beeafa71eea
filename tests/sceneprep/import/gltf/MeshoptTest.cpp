#include <sceneprep/import/gltf/Meshopt.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <meshoptimizer.h>

#include <cstring>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using testing::ElementsAre;
using testing::ThrowsMessage;
using Bytes = std::vector<std::uint8_t>;

Bytes Encode(const void* vertices, std::size_t count, std::size_t stride)
{
    Bytes encoded(meshopt_encodeVertexBufferBound(count, stride));
    encoded.resize(meshopt_encodeVertexBuffer(encoded.data(), encoded.size(), vertices, count, stride));
    return encoded;
}

Bytes Decode(const std::string& extension, const Bytes& encoded)
{
    const Json json = Json::parse(extension);
    return DecodeMeshopt(Field(json, {}), encoded);
}

TEST(Meshopt, DecodesAttributes)
{
    const std::vector<float> vertices = {1, 2, 3, 4, 5, 6};
    const Bytes decoded = Decode(R"({"mode":"ATTRIBUTES","count":2,"byteStride":12})", Encode(vertices.data(), 2, 12));
    ASSERT_EQ(decoded.size(), 24U);
    EXPECT_EQ(std::memcmp(decoded.data(), vertices.data(), 24), 0);
}

TEST(Meshopt, DecodesIndexSequences)
{
    const std::vector<std::uint32_t> indices = {5, 6, 7, 9};
    Bytes encoded(meshopt_encodeIndexSequenceBound(indices.size(), 10));
    encoded.resize(meshopt_encodeIndexSequence(encoded.data(), encoded.size(), indices.data(), indices.size()));
    EXPECT_THAT(Decode(R"({"mode":"INDICES","count":4,"byteStride":2})", encoded), ElementsAre(5, 0, 6, 0, 7, 0, 9, 0));
}

TEST(Meshopt, AppliesFilters)
{
    const std::vector<float> normals = {0, 0, 1, 0};
    Bytes filtered(4);
    meshopt_encodeFilterOct(filtered.data(), 1, 4, 8, normals.data());
    EXPECT_THAT(Decode(R"({"mode":"ATTRIBUTES","count":1,"byteStride":4,"filter":"OCTAHEDRAL"})",
                       Encode(filtered.data(), 1, 4)),
                ElementsAre(0, 0, 127, testing::_));

    const std::vector<float> rotation = {0, 0, 0, 1};
    std::vector<std::int16_t> packed(4);
    meshopt_encodeFilterQuat(packed.data(), 1, 8, 16, rotation.data());
    const Bytes quaternion =
        Decode(R"({"mode":"ATTRIBUTES","count":1,"byteStride":8,"filter":"QUATERNION"})", Encode(packed.data(), 1, 8));
    std::memcpy(packed.data(), quaternion.data(), 8);
    EXPECT_THAT(packed, ElementsAre(0, 0, 0, 32767));

    const float number = 0.75F;
    std::uint32_t exponential = 0;
    meshopt_encodeFilterExp(&exponential, 1, 4, 15, &number);
    const Bytes decoded =
        Decode(R"({"mode":"ATTRIBUTES","count":1,"byteStride":4,"filter":"EXPONENTIAL"})", Encode(&exponential, 1, 4));
    float result = 0;
    std::memcpy(&result, decoded.data(), 4);
    EXPECT_FLOAT_EQ(result, number);
}

TEST(Meshopt, RefusesWhatCannotBeDecoded)
{
    const auto expectProblem = [](const std::string& extension, const Bytes& encoded, const std::string& problem) {
        EXPECT_THAT([&] { Decode(extension, encoded); }, ThrowsMessage<FormatError>(problem)) << extension;
    };
    const Bytes garbage(100, 1);
    expectProblem(R"({"mode":"ATTRIBUTES","count":2,"byteStride":12})", garbage,
                  "the document: the bytes cannot be decoded");
    expectProblem(R"({"mode":"TRIANGLES","count":3,"byteStride":4})", garbage,
                  "the document: the bytes cannot be decoded");
    expectProblem(R"({"mode":"TRIANGLES","count":4,"byteStride":4})", garbage,
                  "the document: count 4 is not a multiple of 3");
    expectProblem(R"({"mode":"TRIANGLES","count":3,"byteStride":1})", garbage,
                  "the document: byteStride 1 is neither 2 nor 4");
    expectProblem(R"({"mode":"ATTRIBUTES","count":2,"byteStride":6})", garbage,
                  "the document: byteStride 6 is not a multiple of 4 up to 256");
    expectProblem(R"({"mode":"PICTURES","count":2,"byteStride":4})", garbage, "mode: 'PICTURES' is not supported");
    expectProblem(R"({"mode":"ATTRIBUTES","count":99999999999,"byteStride":4})", garbage,
                  "the document: 99999999999 elements cannot be in 100 bytes");
    expectProblem(R"({"mode":"ATTRIBUTES","count":2,"byteStride":4})", Bytes(100, 0xA1),
                  "the document: version 1 of the vertex codec is not supported, only 0");
    const std::uint32_t vertex = 0;
    expectProblem(R"({"mode":"ATTRIBUTES","count":1,"byteStride":4,"filter":"COLOR"})", Encode(&vertex, 1, 4),
                  "filter: 'COLOR' is not supported");
    expectProblem(R"({"mode":"ATTRIBUTES","count":1,"byteStride":4,"filter":"QUATERNION"})", Encode(&vertex, 1, 4),
                  "the document: byteStride 4 does not fit the filter QUATERNION");
}

}  // namespace

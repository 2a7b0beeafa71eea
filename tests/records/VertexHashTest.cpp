#include <importing/records/Vertex.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

// Tests what the content hash of a vertex covers, and when it is invalidated.

namespace
{

using Importing::Vertex;
using Support::Change;
using Support::HashModel;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

/// Returns a vertex with UV sets (i, -i) and weights (10 + i, i / 4).
Vertex With(std::uint64_t texCoords, std::uint64_t weights)
{
    Vertex vertex(1, 2, 3);
    vertex.SetNormal(D3DXVECTOR3(4, 5, 6));
    for (std::uint64_t i = 0; i < texCoords; ++i)
        vertex.SetTexCoord(D3DXVECTOR2(static_cast<float>(i), -static_cast<float>(i)), i);
    for (std::uint64_t i = 0; i < weights; ++i)
        vertex.SetWeight(static_cast<std::uint32_t>(10 + i), static_cast<float>(i) / 4, i);
    return vertex;
}

TEST(VertexHash, EveryChangeChangesTheHash)
{
    const D3DXMATRIX matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1);
    const float floats[3] = {7, 7, 7};
    const std::vector<Change<Vertex>> changes = {
        {"SetPosition of floats", [&](Vertex& v) { v.SetPosition(floats); }},
        {"SetPosition", [](Vertex& v) { v.SetPosition(D3DXVECTOR3(1, 2, 8)); }},
        {"SetNormal of floats", [&](Vertex& v) { v.SetNormal(floats); }},
        {"SetNormal", [](Vertex& v) { v.SetNormal(D3DXVECTOR3(4, 5, 8)); }},
        {"SetTexCoord", [](Vertex& v) { v.SetTexCoord(D3DXVECTOR2(8, 8), 1); }},
        {"TransformTexCoord", [&](Vertex& v) { v.TransformTexCoord(matrix, 0); }},
        {"Transform", [&](Vertex& v) { v.Transform(matrix, kIdentity); }},
        {"Scale", [](Vertex& v) { v.Scale(2); }},
        {"SwapYZ", [](Vertex& v) { v.SwapYZ(); }},
        {"InverseZ", [](Vertex& v) { v.InverseZ(); }},
        {"InverseNormal", [](Vertex& v) { v.InverseNormal(); }},
        {"NormalizeNormal", [](Vertex& v) { v.NormalizeNormal(); }},
        {"SetWeight", [](Vertex& v) { v.SetWeight(10, 0.75F, 0); }},
        {"AddWeight", [](Vertex& v) { v.AddWeight(10, 0.75F); }},
        {"ClearWeights", [](Vertex& v) { v.ClearWeights(); }}};
    Support::ExpectHashed<Vertex>(With(2, 2), changes);
    Support::ExpectHashed<Vertex>(With(5, 1), changes);
}

TEST(VertexHash, GettersKeepTheHash)
{
    Vertex vertex = With(2, 2);
    vertex.GetHash();
    vertex.GetPosition();
    vertex.GetNormal();
    vertex.GetTexCoord(1);
    vertex.GetTexCoordCount();
    vertex.GetWeight(1);
    vertex.GetWeightsCount();
    EXPECT_TRUE(vertex.GetIsHashCodeValid());
}

TEST(VertexHash, NearlyEqualNumbersHashAlike)
{
    const auto up = [](float value) { return std::nextafter(value, 99.0F); };
    Support::ExpectSameHash<Vertex>(
        With(2, 2), {{"position", [&](Vertex& v) { v.SetPosition(D3DXVECTOR3(up(1), up(2), up(3))); }},
                     {"normal", [&](Vertex& v) { v.SetNormal(D3DXVECTOR3(up(4), up(5), up(6))); }},
                     {"texture coordinates", [&](Vertex& v) { v.SetTexCoord(D3DXVECTOR2(up(1), -1), 1); }}});
}

TEST(VertexHash, WeightsAreHashedUnmasked)
{
    Support::ExpectHashed<Vertex>(With(2, 2),
                                  {{"weight", [](Vertex& v) { v.SetWeight(11, std::nextafter(0.25F, 9.0F), 1); }},
                                   {"joint", [](Vertex& v) { v.SetWeight(12, 0.25F, 1); }}});
}

TEST(VertexHash, OrderOfWeightsIsHashed)
{
    Vertex a;
    a.AddWeight(1, 0.25F);
    a.AddWeight(2, 0.75F);
    Vertex b;
    b.AddWeight(2, 0.75F);
    b.AddWeight(1, 0.25F);
    EXPECT_TRUE(a != b);
}

TEST(VertexHash, HashFoldsTheFieldsInTheirOrder)
{
    for (const std::uint64_t texCoords : {0U, 1U, 2U, 3U, 4U, 6U})
    {
        for (const std::uint64_t weights : {0U, 1U, 3U})
        {
            Vertex vertex = With(texCoords, weights);
            HashModel model;
            for (std::uint64_t i = 0; i < texCoords; ++i)
                model.Floats({static_cast<float>(i), -static_cast<float>(i)});
            for (std::uint64_t i = 0; i < weights; ++i)
            {
                const std::uint32_t pair[2] = {static_cast<std::uint32_t>(10 + i),
                                               Support::Bits(static_cast<float>(i) / 4)};
                model.Bytes(pair, sizeof(pair));
            }
            model.Floats({4, 5, 6, 1, 2, 3});
            EXPECT_EQ(vertex.GetHash(), model.Fold()) << texCoords << ' ' << weights;
        }
    }
}

TEST(VertexHash, HashDoesNotDependOnHowTheVertexWasBuilt)
{
    // The same content, built step by step with weights that are removed again, and built directly.
    Vertex grown = With(6, 4);
    grown.ClearWeights();
    Vertex plain = With(6, 0);
    EXPECT_EQ(grown.GetHash(), plain.GetHash());
}

TEST(VertexHash, ChangesInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Vertex> vertex;
    const D3DXMATRIX matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1);
    const float three[] = {1, 2, 3};
    const std::function<void()> changes[] = {[&] { vertex.SetPosition(D3DXVECTOR3(1, 2, 3)); },
                                             [&] { vertex.SetPosition(three); },
                                             [&] { vertex.SetNormal(D3DXVECTOR3(1, 2, 3)); },
                                             [&] { vertex.SetNormal(three); },
                                             [&] { vertex.SetTexCoord(D3DXVECTOR2(1, 2), 4); },
                                             [&] { vertex.Transform(matrix, matrix); },
                                             [&] { vertex.TransformTexCoord(matrix, 0); },
                                             [&] { vertex.Scale(2); },
                                             [&] { vertex.SwapYZ(); },
                                             [&] { vertex.InverseZ(); },
                                             [&] { vertex.InverseNormal(); },
                                             [&] { vertex.NormalizeNormal(); },
                                             [&] { vertex.SetWeight(1, 1, 0); },
                                             [&] { vertex.AddWeight(1, 1); },
                                             [&] { vertex.ClearWeights(); }};
    for (const auto& change : changes)
    {
        const int before = vertex.changes;
        change();
        EXPECT_GT(vertex.changes, before) << &change - changes;
    }
}

}  // namespace

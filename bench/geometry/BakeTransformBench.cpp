#include <importing/geometry/Geometry.h>
#include <importing/math/NormalMatrix.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

namespace
{

using Importing::Geometry;
using Importing::Vertex;

D3DXMATRIX Turn() { return {0.8F, 0.6F, 0, 0, -0.6F, 0.8F, 0, 0, 0, 0, 1, 0, 0.01F, 0.02F, 0.03F, 1}; }

void TransformMesh(benchmark::State& state)
{
    Geometry mesh = MakeGrid(state.range(0));
    const D3DXMATRIX matrix = Turn();
    for (auto _ : state)
    {
        mesh.Transform(matrix);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// A plain struct of the size of a vertex.
struct PlainVertex
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 normal;
    std::array<float, 10> rest;
};
static_assert(sizeof(PlainVertex) == sizeof(Vertex));

/// For comparison: the same arithmetic in place, over a plain array of the same size.
void TransformArray(benchmark::State& state)
{
    std::vector<PlainVertex> vertices(static_cast<std::size_t>(state.range(0)));
    const D3DXMATRIX matrix = Turn();
    const D3DXMATRIX normalMatrix = Importing::NormalMatrix(matrix);
    for (auto _ : state)
    {
        for (PlainVertex& vertex : vertices)
        {
            D3DXVec3TransformCoord(&vertex.position, &vertex.position, &matrix);
            D3DXVec3TransformCoord(&vertex.normal, &vertex.normal, &normalMatrix);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(TransformMesh)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(TransformArray)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

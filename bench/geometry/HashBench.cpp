#include <importing/geometry/Geometry.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::Geometry;
using Importing::Vertex;

/// All vertex hashes and the mesh's own.
void HashMesh(benchmark::State& state)
{
    Geometry mesh = MakeGrid(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        for (Vertex& vertex : mesh.VertexArray)
            vertex.Scale(1);
        mesh.SetPolySize(3);
        state.ResumeTiming();
        benchmark::DoNotOptimize(mesh.GetHash());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(HashMesh)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

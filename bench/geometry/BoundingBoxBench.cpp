#include <importing/geometry/Geometry.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::Geometry;

void BoundingBox(benchmark::State& state)
{
    const Geometry mesh = MakeGrid(state.range(0));
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    for (auto _ : state)
    {
        mesh.GetBoundingBox(min, max);
        benchmark::DoNotOptimize(min);
        benchmark::DoNotOptimize(max);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BoundingBox)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

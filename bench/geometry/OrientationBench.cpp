#include <importing/geometry/Geometry.h>
#include <support/BenchMeshes.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::Geometry;

using Repair = int (Geometry::*)(bool);

/// Every normal, or every triangle, has to be flipped: at the start of each run all of them point against each other.
void FlipEverything(benchmark::State& state, Repair repair)
{
    Geometry mesh = MakeSurface(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        mesh.FlipNormals();
        state.ResumeTiming();
        (mesh.*repair)(false);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(FlipEverything, UnifyNormals, &Geometry::UnifyNormals)
    ->Arg(10000)
    ->Arg(1000000)
    ->Arg(10000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FlipEverything, FixFaceCulling, &Geometry::FixFaceCulling)
    ->Arg(10000)
    ->Arg(1000000)
    ->Arg(10000000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace

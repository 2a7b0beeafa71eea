#include <importing/geometry/Geometry.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

using Importing::Geometry;

/// One mesh appended to an empty one.
void AppendMesh(benchmark::State& state)
{
    const Geometry mesh = MakeGrid(state.range(0));
    for (auto _ : state)
    {
        auto target = std::make_unique<Geometry>();
        target->Append(mesh);
        benchmark::DoNotOptimize(target->VertexArray.data());
        state.PauseTiming();
        target.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Boxes of 24 vertices appended one after another until the mesh has that many vertices.
void AppendBoxes(benchmark::State& state)
{
    const Geometry box = MakeBox();
    const D3DXMATRIX matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1);
    for (auto _ : state)
    {
        auto target = std::make_unique<Geometry>();
        while (static_cast<std::int64_t>(target->VertexArray.size()) < state.range(0))
            target->Append(box, matrix);
        benchmark::DoNotOptimize(target->VertexArray.data());
        state.PauseTiming();
        target.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(AppendMesh)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(AppendBoxes)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

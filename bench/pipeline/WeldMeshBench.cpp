#include <pipeline/steps/WeldMesh.h>
#include <support/BenchMeshes.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>

namespace
{

using Importing::Geometry;

/// Welds copies of a mesh; making and destroying them is not counted.
void Weld(benchmark::State& state, const Geometry& mesh)
{
    std::size_t survivors = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        auto welded = std::make_unique<Geometry>(mesh);
        state.ResumeTiming();
        Pipeline::WeldMesh(*welded);
        state.PauseTiming();
        survivors = welded->VertexArray.size();
        welded.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mesh.VertexArray.size()));
    state.counters["survivors"] = static_cast<double>(survivors);
}

void WeldMeshSoup(benchmark::State& state) { Weld(state, MakeTriangleSoup(state.range(0))); }

/// Every position twice, all with equal x.
void WeldMeshWall(benchmark::State& state)
{
    const auto half = static_cast<std::uint32_t>(state.range(0) / 2);
    Geometry wall;
    for (std::uint32_t i = 0; i < 2 * half; ++i)
    {
        wall.VertexArray.emplace_back(1.0F, static_cast<float>(i % half / 1000), static_cast<float>(i % half % 1000));
        wall.IndexArray.push_back(i);
    }
    Weld(state, wall);
    if (state.counters["survivors"] != half)
        state.SkipWithError("vertices were lost");
}

BENCHMARK(WeldMeshSoup)->Name("WeldMesh/Soup")->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(WeldMeshWall)->Name("WeldMesh/Wall")->Arg(2'000'000)->Unit(benchmark::kMillisecond);

}  // namespace

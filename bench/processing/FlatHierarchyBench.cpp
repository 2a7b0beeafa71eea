#include <importing/plugin/SceneContainer.h>
#include <support/BenchScenes.h>
#include <support/FreedMemory.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::SceneContainer;
using Importing::Transform;

/// Flattens and merges one box a node; building the scene and destroying the result are not counted.
void FlatHierarchy(benchmark::State& state, Shape shape)
{
    std::size_t vertices = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        {
            SceneContainer scene;
            FillScene(scene, shape, state.range(0));
            ForgetFreedMemory();
            state.ResumeTiming();
            scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 2, -1, true);
            state.PauseTiming();
            vertices = 0;
            for (const std::int32_t surface : scene.NodeLibrary[0].SurfaceList)
                vertices += scene.GeometryLibrary[static_cast<std::size_t>(surface)].VertexArray.size();
        }
        state.ResumeTiming();
    }
    state.counters["vertices"] = static_cast<double>(vertices);
    state.counters["per_node"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK_CAPTURE(FlatHierarchy, Flat, Shape::Flat)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FlatHierarchy, Binary, Shape::Binary)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FlatHierarchy, Chain, Shape::Chain)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

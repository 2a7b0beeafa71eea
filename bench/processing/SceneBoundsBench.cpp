#include <importing/plugin/SceneContainer.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::SceneContainer;

/// Bounds of a scene with a box at every node but the root: flat, 17 levels at 100,000 nodes, and a level for each
/// node.
void SceneBounds(benchmark::State& state, Shape shape)
{
    SceneContainer scene;
    FillScene(scene, shape, state.range(0));
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    for (auto _ : state)
    {
        scene.GetBoundingBox(min, max);
        benchmark::DoNotOptimize(min);
        benchmark::DoNotOptimize(max);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(SceneBounds, Flat, Shape::Flat)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SceneBounds, Binary, Shape::Binary)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SceneBounds, Chain, Shape::Chain)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

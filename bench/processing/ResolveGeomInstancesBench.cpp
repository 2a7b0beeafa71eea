#include <importing/plugin/SceneContainer.h>
#include <support/BenchScenes.h>
#include <support/FreedMemory.h>

#include <benchmark/benchmark.h>

#include <optional>

namespace
{

using Importing::SceneContainer;

/// Ten surfaces share each box: nine of ten get a copy.
SceneContainer SceneOfInstances(std::int64_t surfaceCount)
{
    constexpr int kSharers = 10;
    SceneContainer scene;
    FillScene(scene, Shape::Flat, surfaceCount);
    for (int i = 0; i < static_cast<int>(surfaceCount); ++i)
        scene.SurfaceLibrary[static_cast<std::size_t>(i)].SetGeometryID(i / kSharers);
    scene.GeometryLibrary.resize(static_cast<std::size_t>(surfaceCount) / kSharers);
    return scene;
}

void ResolveGeomInstances(benchmark::State& state)
{
    const SceneContainer instances = SceneOfInstances(state.range(0));
    std::optional<SceneContainer> scene;
    for (auto _ : state)
    {
        state.PauseTiming();
        scene.emplace(instances);
        ForgetFreedMemory();
        state.ResumeTiming();
        scene->ResolveGeomInstances();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ResolveGeomInstances)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

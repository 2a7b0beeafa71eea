#include <importing/plugin/SceneContainer.h>
#include <support/AssimpScene.h>
#include <support/BenchScenes.h>
#include <support/FreedMemory.h>

#include <assimp/scene.h>
#include <benchmark/benchmark.h>

#include <memory>

namespace
{

using Importing::SceneContainer;

std::unique_ptr<SceneContainer> MakeScene(std::int64_t nodeCount)
{
    auto scene = std::make_unique<SceneContainer>();
    FillScene(*scene, Shape::Flat, nodeCount);
    return scene;
}

void CopyScene(benchmark::State& state)
{
    const auto scene = MakeScene(state.range(0));
    for (auto _ : state)
    {
        auto copy = std::make_unique<SceneContainer>(*scene);
        benchmark::DoNotOptimize(copy.get());
        state.PauseTiming();
        copy.reset();
        ForgetFreedMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// What the copy is held against.
void CopySceneByAssimp(benchmark::State& state)
{
    const AssimpScene scene = MakeAssimpScene(state.range(0));
    for (auto _ : state)
    {
        AssimpScene copy = CopyOf(*scene);
        benchmark::DoNotOptimize(copy.get());
        state.PauseTiming();
        copy.reset();
        ForgetFreedMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Appends a scene to one that has as many nodes, or none; the second argument is how many.
void AppendScene(benchmark::State& state)
{
    const auto own = MakeScene(state.range(1));
    const auto other = MakeScene(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        {
            SceneContainer scene(*own);
            ForgetFreedMemory();
            state.ResumeTiming();
            scene.AppendSC(other.get());
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(CopyScene)->Arg(10000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(CopySceneByAssimp)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendScene)
    ->Args({5000, 5000})
    ->Args({50000, 50000})
    ->Args({10000, 0})
    ->Args({100000, 0})
    ->Args({100000, 100000})
    ->Unit(benchmark::kMillisecond);

}  // namespace

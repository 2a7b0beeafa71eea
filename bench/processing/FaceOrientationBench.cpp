#include <importing/plugin/SceneContainer.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <optional>

namespace
{

using Importing::SceneContainer;
using Importing::Transform;

/// Every second node is mirrored, so every mesh below it is mirrored and flipped.
SceneContainer MirroredScene(Shape shape, std::int64_t nodeCount)
{
    SceneContainer scene;
    FillScene(scene, shape, nodeCount);
    const D3DXMATRIX mirror(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.5F, 0.25F, 0.125F, 1);
    for (std::size_t i = 1; i < scene.NodeLibrary.size(); i += 2)
        scene.NodeLibrary[i].SetLocalTransform(Transform(mirror));
    return scene;
}

void RemoveNegativeScale(benchmark::State& state, Shape shape)
{
    const SceneContainer mirrored = MirroredScene(shape, state.range(0));
    std::optional<SceneContainer> scene;
    for (auto _ : state)
    {
        state.PauseTiming();
        scene.emplace(mirrored);
        state.ResumeTiming();
        scene->RemoveNegativeScaleMatricies(0, Transform::Indentity, Transform::Indentity);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(RemoveNegativeScale, Flat, Shape::Flat)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RemoveNegativeScale, Binary, Shape::Binary)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RemoveNegativeScale, Chain, Shape::Chain)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

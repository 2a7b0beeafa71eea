#include <importing/plugin/SceneContainer.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace
{

using Importing::Node;
using Importing::SceneContainer;

/// Nodes that are all called Box.
SceneContainer EqualNames(std::int64_t count)
{
    Node box;
    box.SetName("Box");
    SceneContainer scene;
    scene.NodeLibrary.assign(static_cast<std::size_t>(count), box);
    return scene;
}

/// As many nodes again, which carry the very names that would come first.
SceneContainer CollidingNames(std::int64_t count)
{
    SceneContainer scene = EqualNames(count);
    for (std::int64_t i = 0; i < count; ++i)
    {
        Node taken;
        taken.SetName("Box(" + std::to_string(i) + ")");
        scene.NodeLibrary.push_back(taken);
    }
    return scene;
}

void Rename(benchmark::State& state, SceneContainer (*makeScene)(std::int64_t))
{
    const SceneContainer original = makeScene(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        {
            SceneContainer scene(original);
            state.ResumeTiming();
            scene.MakeNodeNamesUnambiguous();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(Rename, Equal, EqualNames)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Rename, Colliding, CollidingNames)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

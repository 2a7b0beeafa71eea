#include <importing/math/Box.h>
#include <importing/plugin/SceneContainer.h>
#include <support/SpreadBoxes.h>

#include <CGAL/box_intersection_d.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace
{

using Importing::Box;
using Importing::SceneContainer;

/// The whole call: local boxes, world matrices, world boxes, search and offsets.
void CollisionOffsets(benchmark::State& state, Spread spread)
{
    SceneContainer scene;
    FillSpreadScene(scene, spread, state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(scene.CalculateSurfaceCollisionOffset());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// For comparison: finds the overlapping pairs of the same boxes with CGAL, and ignores them.
void CollisionPairsByCgal(benchmark::State& state, Spread spread)
{
    using CgalBox = CGAL::Box_intersection_d::Box_d<float, 3>;

    std::vector<CgalBox> boxes;
    for (const Box& box : SpreadBoxes(spread, state.range(0)))
    {
        float low[] = {box.min.x, box.min.y, box.min.z};
        float high[] = {box.max.x, box.max.y, box.max.z};
        boxes.emplace_back(low, high);
    }
    std::int64_t pairs = 0;
    for (auto _ : state)
    {
        std::vector<CgalBox> sorted(boxes);
        pairs = 0;
        CGAL::box_self_intersection_d(sorted.begin(), sorted.end(),
                                      [&pairs](const CgalBox&, const CgalBox&) { ++pairs; });
        benchmark::DoNotOptimize(pairs);
    }
    state.counters["pairs"] = static_cast<double>(pairs);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

bool AreOverlapping(const Box& a, const Box& b)
{
    return !(b.max.x < a.min.x || a.max.x < b.min.x || b.max.y < a.min.y || a.max.y < b.min.y || b.max.z < a.min.z ||
             a.max.z < b.min.z);
}

/// The pass itself, with the same boxes computed beforehand: every box against every box.
void CollisionOffsetsByDoubleLoop(benchmark::State& state, Spread spread)
{
    const std::vector<Box> boxes = SpreadBoxes(spread, state.range(0));
    for (auto _ : state)
    {
        std::vector<int> offsets(boxes.size());
        for (std::size_t current = 0; current < boxes.size(); ++current)
            for (std::size_t other = 0; other < boxes.size(); ++other)
                if (other != current && AreOverlapping(boxes[current], boxes[other]) &&
                    offsets[current] == offsets[other])
                    ++offsets[other];
        benchmark::DoNotOptimize(offsets.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(CollisionOffsets, Sparse, Spread::Sparse)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CollisionOffsets, Clusters, Spread::Clusters)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CollisionPairsByCgal, Sparse, Spread::Sparse)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CollisionPairsByCgal, Clusters, Spread::Clusters)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CollisionOffsetsByDoubleLoop, Sparse, Spread::Sparse)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

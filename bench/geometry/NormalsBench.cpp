#include <importing/geometry/Geometry.h>
#include <support/AssimpMesh.h>
#include <support/BenchMeshes.h>

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>

namespace
{

using Importing::Geometry;
using Importing::Vertex;

/// Smooth everywhere, so the mesh keeps its size and can be reused for every run.
void ComputeNormals(benchmark::State& state)
{
    Geometry mesh = MakeSurface(state.range(0));
    const std::size_t vertices = mesh.VertexArray.size();
    for (auto _ : state)
    {
        mesh.ComputeNormals();
        benchmark::ClobberMemory();
    }
    if (mesh.VertexArray.size() != vertices)
        state.SkipWithError("vertices were split");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Three corners out of six of every vertex are split off: the vertex array grows to four times its size.
void ComputeNormalsOfFolds(benchmark::State& state)
{
    const Geometry mesh = MakeFoldedSurface(state.range(0));
    std::size_t vertices = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        auto split = std::make_unique<Geometry>(mesh);
        state.ResumeTiming();
        split->ComputeNormals();
        benchmark::DoNotOptimize(split->VertexArray.data());
        state.PauseTiming();
        vertices = split->VertexArray.size();
        split.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["vertices"] = static_cast<double>(vertices);
}

/// For comparison: Assimp's step with the same purpose and the same crease angle. It searches for vertices at the same
/// position itself, so each triangle has three vertices of its own, as after importing.
void ComputeNormalsAssimp(benchmark::State& state)
{
    const Geometry mesh = MakeTriangleSoup(state.range(0));
    for (auto _ : state)
    {
        state.PauseTiming();
        auto importer = std::make_unique<Assimp::Importer>();
        importer->SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, 36.87F);
        LoadIntoAssimp(*importer, mesh, Normals::Dropped);
        state.ResumeTiming();
        importer->ApplyPostProcessing(aiProcess_GenSmoothNormals);
        state.PauseTiming();
        importer.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// One frame.
void ComputePointCacheNormals(benchmark::State& state)
{
    Geometry mesh = MakeSurface(state.range(0));
    for (Vertex& vertex : mesh.VertexArray)
        mesh.PointCachePositions.push_back(vertex.GetPosition());
    mesh.PointCacheNormals.resize(mesh.PointCachePositions.size());
    for (auto _ : state)
    {
        mesh.ComputePointCacheNormals();
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ComputeNormals)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ComputeNormalsAssimp)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);  // a minute for 10,000,000
BENCHMARK(ComputeNormalsOfFolds)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ComputePointCacheNormals)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);

}  // namespace

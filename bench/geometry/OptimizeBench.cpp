#include <importing/base/ForReading.h>
#include <importing/geometry/Geometry.h>
#include <support/AssimpMesh.h>
#include <support/BenchMeshes.h>
#include <support/PeakMemory.h>

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <benchmark/benchmark.h>
#include <meshoptimizer.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace
{

using Importing::ForReading;
using Importing::Geometry;
using Importing::Vertex;

/// Makes every vertex hash "not computed", as after an import.
Geometry Unhashed(Geometry mesh)
{
    for (Vertex& vertex : mesh.VertexArray)
        vertex.Scale(1);
    return mesh;
}

/// Reports the number of remaining vertices and the memory that welding needs.
void Report(benchmark::State& state, std::size_t vertices, std::size_t survivors, const PeakMemory& memory)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(vertices));
    state.counters["survivors"] = static_cast<double>(survivors);
    state.counters["bytes_per_vertex"] = static_cast<double>(memory.GetBytes()) / static_cast<double>(vertices);
}

/// Welds copies of a mesh; making and destroying them is not counted.
void Weld(benchmark::State& state, const Geometry& mesh)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto welded = std::make_unique<Geometry>(mesh);
        state.ResumeTiming();
        welded->Optimize();
        benchmark::DoNotOptimize(welded->VertexArray.data());
        state.PauseTiming();
        welded.reset();
        state.ResumeTiming();
    }

    Geometry welded = mesh;
    const PeakMemory memory;
    welded.Optimize();
    Report(state, mesh.VertexArray.size(), welded.VertexArray.size(), memory);
}

void WeldTriangleSoup(benchmark::State& state) { Weld(state, Unhashed(MakeTriangleSoup(state.range(0)))); }

/// Six triangles share a vertex. One vertex exists twice, so that the welding is not skipped.
void WeldSurface(benchmark::State& state)
{
    Geometry mesh = Unhashed(MakeSurface(state.range(0)));
    mesh.VertexArray.push_back(mesh.VertexArray.back());
    Weld(state, mesh);
}

/// A mesh as other libraries store it: plain arrays of attributes.
struct OpenVertex
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 normal;
    D3DXVECTOR2 texCoord;
};

std::vector<OpenVertex> OpenVertices(const Geometry& mesh)
{
    std::vector<OpenVertex> vertices;
    vertices.reserve(mesh.VertexArray.size());
    for (const Vertex& vertex : mesh.VertexArray)
        vertices.push_back(
            {ForReading(vertex).GetPosition(), ForReading(vertex).GetNormal(), ForReading(vertex).GetTexCoord(0)});
    return vertices;
}

/// For comparison: finds equal vertices byte by byte and makes new arrays of indices and remaining vertices.
std::size_t WeldWithMeshoptimizer(const std::vector<OpenVertex>& vertices, const std::vector<unsigned>& indices)
{
    std::vector<unsigned> remap(vertices.size());
    const std::size_t survivors = meshopt_generateVertexRemap(remap.data(), indices.data(), indices.size(),
                                                              vertices.data(), vertices.size(), sizeof(OpenVertex));
    std::vector<unsigned> weldedIndices(indices.size());
    meshopt_remapIndexBuffer(weldedIndices.data(), indices.data(), indices.size(), remap.data());
    std::vector<OpenVertex> welded(survivors);
    meshopt_remapVertexBuffer(welded.data(), vertices.data(), vertices.size(), sizeof(OpenVertex), remap.data());
    benchmark::DoNotOptimize(weldedIndices.data());
    benchmark::DoNotOptimize(welded.data());
    return survivors;
}

void WeldTriangleSoupMeshoptimizer(benchmark::State& state)
{
    const Geometry mesh = MakeTriangleSoup(state.range(0));
    const std::vector<OpenVertex> vertices = OpenVertices(mesh);
    for (auto _ : state)
        WeldWithMeshoptimizer(vertices, mesh.IndexArray);

    const PeakMemory memory;
    const std::size_t survivors = WeldWithMeshoptimizer(vertices, mesh.IndexArray);
    Report(state, vertices.size(), survivors, memory);
}

/// As above, for Assimp's step of that purpose.
void WeldTriangleSoupAssimp(benchmark::State& state)
{
    const Geometry mesh = MakeTriangleSoup(state.range(0));
    const auto load = [&mesh] {
        auto importer = std::make_unique<Assimp::Importer>();
        LoadIntoAssimp(*importer, mesh, Normals::Kept);
        return importer;
    };
    for (auto _ : state)
    {
        state.PauseTiming();
        auto importer = load();
        state.ResumeTiming();
        importer->ApplyPostProcessing(aiProcess_JoinIdenticalVertices);
        state.PauseTiming();
        importer.reset();
        state.ResumeTiming();
    }

    const auto importer = load();
    const PeakMemory memory;
    const aiScene* scene = importer->ApplyPostProcessing(aiProcess_JoinIdenticalVertices);
    Report(state, mesh.VertexArray.size(), scene->mMeshes[0]->mNumVertices, memory);
}

BENCHMARK(WeldTriangleSoup)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(WeldTriangleSoupMeshoptimizer)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(WeldTriangleSoupAssimp)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(WeldSurface)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);

}  // namespace

#include <importing/geometry/Geometry.h>
#include <support/BenchMeshes.h>

#include <benchmark/benchmark.h>

namespace
{

using Importing::Geometry;

using Mapping = int (Geometry::*)(int, bool);

/// Overwrites the UV set of the mesh. Normals are computed first, so that they have various directions.
void GenerateUVs(benchmark::State& state, Mapping mapping)
{
    Geometry mesh = MakeSurface(state.range(0));
    mesh.ComputeNormals();
    for (auto _ : state)
    {
        (mesh.*mapping)(0, false);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Sizes(benchmark::internal::Benchmark* run)
{
    run->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(GenerateUVs, PlanarX, &Geometry::GenerateUVsPlanarX)->Apply(Sizes);
BENCHMARK_CAPTURE(GenerateUVs, PlanarY, &Geometry::GenerateUVsPlanarY)->Apply(Sizes);
BENCHMARK_CAPTURE(GenerateUVs, PlanarZ, &Geometry::GenerateUVsPlanarZ)->Apply(Sizes);
BENCHMARK_CAPTURE(GenerateUVs, Cubic, &Geometry::GenerateUVsCubic)->Apply(Sizes);
BENCHMARK_CAPTURE(GenerateUVs, Cylindrical, &Geometry::GenerateUVsCylindrical)->Apply(Sizes);
BENCHMARK_CAPTURE(GenerateUVs, Spherical, &Geometry::GenerateUVsSpherical)->Apply(Sizes);

}  // namespace

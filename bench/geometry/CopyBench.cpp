#include <importing/geometry/Geometry.h>
#include <support/BenchScenes.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace
{

using Importing::Geometry;
using Importing::Vertex;

void CopyMesh(benchmark::State& state)
{
    const Geometry mesh = MakeGrid(state.range(0));
    for (auto _ : state)
    {
        auto copy = std::make_unique<Geometry>(mesh);
        benchmark::DoNotOptimize(copy->VertexArray.data());
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(sizeof(Vertex)));
}

/// For comparison: copies the same number of bytes into memory that was not touched before.
void CopyBytes(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0)) * sizeof(Vertex);
    const auto source = std::make_unique<unsigned char[]>(size);
    std::memset(source.get(), 1, size);
    for (auto _ : state)
    {
        std::unique_ptr<unsigned char[]> copy(new unsigned char[size]);
        std::memcpy(copy.get(), source.get(), size);
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

BENCHMARK(CopyMesh)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyBytes)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

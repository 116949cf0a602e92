/// @file
/// The benchmarks one by one, with Google Benchmark's own command line.

#include "Benchmarks.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    static_cast<void>(bench::allBenchmarks()); // registers what they measure
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// bench_tav [--quick] [Google Benchmark's arguments]: every row of docs/performance.md with its yardsticks.

#include "Row.h"

#include <cstring>

int main(int argc, char** argv)
{
    unsigned largest = 1000000;
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--quick") == 0)
            largest = 100000;
        else
            argv[kept++] = argv[i];
    }
    argc = kept;

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    bench::registerRows(largest);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

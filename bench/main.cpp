// bench_tav [--largest=SIZE] [--quick] [Google Benchmark's arguments]: every row of docs/performance.md with its
// yardsticks. With --quick for the growth alone.

#include "Row.h"

#include <cstdlib>
#include <cstring>

namespace {

/// Takes the program's own arguments out of the list.
bench::Manner takeManner(int& argc, char** argv)
{
    constexpr char kLargest[] = "--largest=";
    bench::Manner manner;
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--quick") == 0)
            manner = {100000, true};
        else if (std::strncmp(argv[i], kLargest, sizeof(kLargest) - 1) == 0)
            manner.largest = static_cast<unsigned>(std::strtoul(argv[i] + sizeof(kLargest) - 1, nullptr, 10));
        else
            argv[kept++] = argv[i];
    }
    argc = kept;
    return manner;
}

} // namespace

int main(int argc, char** argv)
{
    bench::Manner const manner = takeManner(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    bench::registerRows(manner);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

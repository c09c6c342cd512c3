// hvhost from start to end with a small job, against a program that starts a default Java virtual
// machine, makes one call into the engine's jar and leaves.

#include <cstdio>
#include <string>

#include "Child.h"
#include "Measure.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_startup DIR\n");
        return 2;
    }
    const std::string binaries = bench::programDirectory();
    const std::string output = argv[1] + std::string("/startup.csv");
    const std::string jar = binaries + "/../lib/hvinteg/hv/af/components/hvengine.jar";
    const bench::Comparison comparison = bench::interleave(
        20,
        [&] {
            return bench::runChild(
                       {binaries + "/hvhost", "convert", "--force", BENCH_WEATHER, output})
                .wallMilliseconds;
        },
        [&] {
            return bench::runChild({binaries + "/bare_jvm", BENCH_JVM, jar}).wallMilliseconds;
        });
    return bench::report("hvhost start to end", comparison, "ms", 1.5) ? 0 : 1;
}

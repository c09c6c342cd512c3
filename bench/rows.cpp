// The cases of a dataset of ten numbers, which the host has opened from its file, as the engine
// asks for them: against an iterator that only points into memory; and with a weight, a date and
// user-missing values among them against without.

#include <cstdio>
#include <string>

#include "Cases.h"
#include "Measure.h"
#include "Rows.h"
#include "data/HVRawDataIterator.h"

namespace {

constexpr std::size_t caseCount = 2'000'000;
constexpr int repetitions = 9;

/// Asks for every value of every record; nanoseconds a value.
double serve(HVStatDataIterator& rows)
{
    const bench::Stopwatch watch;
    double sum = 0;
    while (rows.nextRecord() == HVStatDataIterator::RecordAvailable)
        for (unsigned long long field = 0; field < bench::rowColumns; ++field) {
            void* value = nullptr;
            unsigned long long length = 0;
            rows.getRecordValue(field, value, length);
            if (value != nullptr)
                sum += *static_cast<const double*>(value);
        }
    const double nanoseconds = watch.milliseconds() * 1e6;
    // Nobody looks at the sum, but the compiler cannot know.
    if (sum == -1)
        std::printf("%f", sum);
    return nanoseconds / static_cast<double>(caseCount * bench::rowColumns);
}

/// A first pass, in which the iterator counts.
double serveCases(const UserInputCaseFile& file)
{
    HVRawDataIterator cases(*file.DataSource(), std::vector<int>(), std::vector<MeasurementLevel>(),
                            false, kWeightRound, false, nullptr);
    return serve(cases);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_rows DIR\n");
        return 2;
    }
    const std::string plain = argv[1] + std::string("/plain.sav");
    const std::string ruled = argv[1] + std::string("/ruled.sav");
    bench::writeCases(plain, bench::CaseRules::None, caseCount);
    bench::writeCases(ruled, bench::CaseRules::All, caseCount);
    const auto plainFile = bench::openCases(plain);
    const auto ruledFile = bench::openCases(ruled);
    bench::MemoryRows memory(caseCount);

    const bench::Comparison serving = bench::interleave(
        repetitions, [&] { return serveCases(*plainFile); },
        [&] {
            memory.rewind();
            return serve(memory);
        });
    const bench::Comparison rules = bench::interleave(
        repetitions, [&] { return serveCases(*ruledFile); },
        [&] { return serveCases(*plainFile); });
    const bool servingHolds = bench::report("row serving, a value", serving, "ns", 2.5);
    return bench::report("row serving with rules", rules, "ns", 1.4) && servingHolds ? 0 : 1;
}

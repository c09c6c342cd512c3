// What serving a record costs, for each value of ten: of cases in memory, against a row iterator
// that only points into the same memory; with a weight, a date and user-missing values among them,
// against without; and of a dataset that the host has opened from its file, against its own case
// iterator.

#include <cstdio>
#include <string>

#include "Cases.h"
#include "Measure.h"
#include "Rows.h"
#include "VexaCases.h"
#include "data/HVRawDataIterator.h"

namespace {

constexpr std::size_t rowCount = 2'000'000;
constexpr int repetitions = 9;

/// Nanoseconds a value of what asks for every value of every record, and adds them up.
template <typename AddAll>
double nanosecondsOf(AddAll addAll)
{
    const bench::Stopwatch watch;
    const double sum = addAll();
    const double nanoseconds = watch.milliseconds() * 1e6;
    // Nobody wants to know the sum, but the compiler must not know that.
    if (sum == -1)
        std::printf("%f\n", sum);
    return nanoseconds / static_cast<double>(rowCount * bench::rowColumns);
}

/// As the engine does, which does not know whose rows they are: nor may the compiler, which would
/// make plain calls of the virtual ones.
double addRecords(HVStatDataIterator& given)
{
    HVStatDataIterator* volatile hidden = &given;
    HVStatDataIterator& rows = *hidden;
    double sum = 0;
    while (rows.nextRecord() == HVStatDataIterator::RecordAvailable)
        for (unsigned long long field = 0; field < bench::rowColumns; ++field) {
            void* value = nullptr;
            unsigned long long length = 0;
            rows.getRecordValue(field, value, length);
            if (value != nullptr)
                sum += *static_cast<const double*>(value);
        }
    return sum;
}

/// As a procedure does that reads its cases itself.
double addCases(const VEXA_DataSource& source)
{
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    double sum = 0;
    while (cases->NextCase() != 0)
        for (int column = 0; column < static_cast<int>(bench::rowColumns); ++column)
            sum += cases->GetNumericValue(column);
    return sum;
}

/// The first pass, in which the iterator counts.
double serve(const VEXA_DataSource& source)
{
    HVRawDataIterator cases(source, std::vector<int>(), std::vector<MeasurementLevel>(), false,
                            kWeightRound, false, nullptr);
    return nanosecondsOf([&] { return addRecords(cases); });
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_rows DIR\n");
        return 2;
    }
    bench::MemoryRows rows(rowCount);
    const bench::MemoryCases plain(rows.values(), bench::CaseRules::None);
    const bench::MemoryCases ruled(rows.values(), bench::CaseRules::Some);
    const bench::Comparison serving = bench::interleave(
        repetitions, [&] { return serve(plain); },
        [&] {
            rows.rewind();
            return nanosecondsOf([&] { return addRecords(rows); });
        });
    const bench::Comparison rules = bench::interleave(
        repetitions, [&] { return serve(ruled); }, [&] { return serve(plain); });

    const std::string path = argv[1] + std::string("/rows.sav");
    bench::writeCases(path, rowCount);
    const auto file = bench::openCases(path);
    const VEXA_DataSource& dataset = *file->DataSource();
    const bench::Comparison streaming = bench::interleave(
        repetitions, [&] { return serve(dataset); },
        [&] { return nanosecondsOf([&] { return addCases(dataset); }); });

    const bool servingHolds = bench::report("serving a value", serving, "ns", 2.5);
    const bool rulesHold = bench::report("serving a value, with rules", rules, "ns", 1.4);
    return bench::report("serving a value of a file", streaming, "ns", 2.5) && servingHolds &&
                   rulesHold
               ? 0
               : 1;
}

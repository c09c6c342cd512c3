// What it takes to walk through a dataset that is far larger than that: the peak of memory of a
// process that opens a file through the host and iterates over its cases, above the peak of one
// that does nothing. bench_memory DIR measures; the other forms are its child processes.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Cases.h"
#include "Child.h"
#include "DuckDb.h"
#include "MultiByte.h"
#include "Rows.h"
#include "data/HVRawDataIterator.h"

namespace {

constexpr double limitMegabytes = 200;
constexpr std::size_t numberCases = 20'000'000;
constexpr std::size_t textCases = 5'000'000;

std::string numbersIn(const std::string& directory)
{
    return directory + "/numbers.parquet";
}

std::string textsIn(const std::string& directory)
{
    return directory + "/texts.parquet";
}

/// Four texts with letters that other encodings hold in other bytes, and six numbers.
int write(const std::string& directory)
{
    bench::DuckDb database(2);
    bench::writeRows(database, numbersIn(directory), numberCases);
    std::string select;
    for (int column = 0; column < 4; ++column)
        select += "'größe " + std::to_string(column) + " ' || (i * 7919 % 1000003) AS t" +
                  std::to_string(column) + ", ";
    for (int column = 0; column < 6; ++column)
        select += "(i * 104729 % 1000003) / 16 + " + std::to_string(column) + " AS v" +
                  std::to_string(column) + ", ";
    database.run("COPY (SELECT " + select + "FROM range(" + std::to_string(textCases) +
                 ") t(i)) TO '" + textsIn(directory) + "' (FORMAT parquet)");
    return 0;
}

int iterate(const std::string& path, const std::string& codePage)
{
    SetDefaultCodePage(codePage);
    const auto file = bench::openCases(path);
    HVRawDataIterator cases(*file->DataSource(), std::vector<int>(),
                            std::vector<MeasurementLevel>(), false, kWeightNone, false, nullptr);
    void* value = nullptr;
    unsigned long long length = 0;
    while (cases.nextRecord() == HVStatDataIterator::RecordAvailable)
        for (unsigned long long field = 0; field < bench::rowColumns; ++field)
            cases.getRecordValue(field, value, length);
    return cases.GetNCases() == file->CaseCount() ? 0 : 1;
}

/// The largest of three runs.
double peak(const std::vector<std::string>& command)
{
    double megabytes = 0;
    for (int run = 0; run < 3; ++run)
        megabytes = std::max(megabytes, bench::runChild(command).peakMegabytes);
    return megabytes;
}

bool report(const std::string& self, const std::string& what, const std::string& path,
            const std::string& codePage)
{
    const double idle = peak({self, "idle"});
    const double ours = peak({self, "iterate", path, codePage}) - idle;
    const bool holds = ours < limitMegabytes;
    std::printf("memory to iterate over %s: %.4g MB above %.4g MB (limit %.4g MB)%s\n",
                what.c_str(), ours, idle, limitMegabytes, holds ? "" : " OVER");
    std::fflush(stdout);
    return holds;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words == std::vector<std::string>{"idle"})
        return 0;
    if (words.size() == 2 && words[0] == "write")
        return write(words[1]);
    if (words.size() == 3 && words[0] == "iterate")
        return iterate(words[1], words[2]);
    if (words.size() != 1) {
        std::fprintf(stderr, "usage: bench_memory DIR\n");
        return 2;
    }
    const std::string self = bench::programDirectory() + "/bench_memory";
    // A child inherits its parent's peak, so another one writes the files.
    bench::runChild({self, "write", words[0]});
    const bool numbersHold =
        report(self, "20,000,000 cases of 10 numbers", numbersIn(words[0]), "UTF-8");
    return report(self, "5,000,000 cases with texts in another encoding", textsIn(words[0]),
                  "windows-1252") &&
                   numbersHold
               ? 0
               : 1;
}

#include "Cases.h"

#include <vector>

#include "HostConversions.h"
#include "Rows.h"

namespace bench {

namespace {

/// Which column of a dataset with rules is which.
enum : int
{
    kWeight = 0,
    kDate = 1,
    kWithMissing = 2
};

constexpr double kSecondsPerDay = 86400;
constexpr std::size_t kDays = 9000;

VEXA_Variable variableOf(int column, CaseRules rules)
{
    VEXA_Variable variable(0);
    variable.SetName(columnName(static_cast<std::size_t>(column)));
    if (rules == CaseRules::None)
        return variable;
    if (column == kDate)
        variable.SetFormat({11, kFormatDate, 0});
    if (column == kWithMissing)
        variable.SetMissingValues(std::vector<double>{-1, 0, 99});
    return variable;
}

double caseValue(std::size_t row, int column, CaseRules rules)
{
    if (rules == CaseRules::All && column == kWeight)
        return 0.5 + static_cast<double>(row % 7);
    if (rules == CaseRules::All && column == kDate)
        return GetBaseDateNumber() + static_cast<double>(row % kDays) * kSecondsPerDay;
    return valueAt(row, static_cast<std::size_t>(column));
}

UserCaseFileSpec specOf(const std::string& path, bool forOutput)
{
    UserCaseFileSpec spec;
    spec.Init(path, true, forOutput);
    return spec;
}

} // namespace

void writeCases(const std::string& path, CaseRules rules, std::size_t cases)
{
    const UserOutputCaseFile file(specOf(path, true));
    IndependentDataStore& store = *file.DataSource();
    const int columns = static_cast<int>(rowColumns);
    for (int column = 0; column < columns; ++column)
        store.MakeVariable(variableOf(column, rules));
    if (rules == CaseRules::All)
        store.SetWeightVar(kWeight);
    store.CommitDictionary();
    std::vector<OBS> buffer(static_cast<std::size_t>(store.GetObsAreaSize()));
    VEXA_Case newCase(&store, buffer.data());
    for (std::size_t row = 0; row < cases; ++row) {
        for (int column = 0; column < columns; ++column)
            newCase.SetNumericValue(column, caseValue(row, column, rules));
        store.AddCase(newCase);
    }
    store.Close();
}

std::unique_ptr<UserInputCaseFile> openCases(const std::string& path)
{
    return std::make_unique<UserInputCaseFile>(specOf(path, false), nullptr);
}

} // namespace bench

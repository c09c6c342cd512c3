#include "Cases.h"

#include "Rows.h"
#include "VexaCases.h"

namespace bench {

namespace {

constexpr int kDate = 1;
constexpr int kWithMissing = 2;

VEXA_Variable variableOf(int column, CaseRules rules)
{
    VEXA_Variable variable(0);
    variable.SetName(columnName(static_cast<std::size_t>(column)));
    if (rules == CaseRules::Some && column == kDate)
        variable.SetFormat({11, kFormatDate, 0});
    if (rules == CaseRules::Some && column == kWithMissing)
        variable.SetMissingValues(std::vector<double>{-1, 0, 99});
    return variable;
}

UserCaseFileSpec specOf(const std::string& path, bool forOutput)
{
    UserCaseFileSpec spec;
    spec.Init(path, true, forOutput);
    return spec;
}

class MemoryCaseIterator final : public VEXA_InputCaseIterator
{
public:
    explicit MemoryCaseIterator(const std::vector<double>& values)
        : _values(values.data()), _rows(values.size() / rowColumns)
    {
    }

    int NextCase() override { return _next < _rows ? (++_next, 1) : 0; }
    double GetNumericValue(int column) const override { return GetObsPointer(column)->number; }
    const char* GetStringValue(int column) const override { return GetObsPointer(column)->text; }
    const OBS* GetObsPointer(int column) const override
    {
        return reinterpret_cast<const OBS*>(_values) + (_next - 1) * rowColumns + column;
    }
    long long GetCaseCount() const override { return static_cast<long long>(_next); }

private:
    const double* _values;
    std::size_t _rows;
    std::size_t _next = 0;
};

} // namespace

void writeCases(const std::string& path, std::size_t cases)
{
    const UserOutputCaseFile file(specOf(path, true));
    IndependentDataStore& store = *file.DataSource();
    const int columns = static_cast<int>(rowColumns);
    for (int column = 0; column < columns; ++column)
        store.MakeVariable(variableOf(column, CaseRules::None));
    store.CommitDictionary();
    std::vector<OBS> buffer(static_cast<std::size_t>(store.GetObsAreaSize()));
    VEXA_Case newCase(&store, buffer.data());
    for (std::size_t row = 0; row < cases; ++row) {
        for (int column = 0; column < columns; ++column)
            newCase.SetNumericValue(column, valueAt(row, static_cast<std::size_t>(column)));
        store.AddCase(newCase);
    }
    store.Close();
}

std::unique_ptr<UserInputCaseFile> openCases(const std::string& path)
{
    return std::make_unique<UserInputCaseFile>(specOf(path, false), nullptr);
}

MemoryCases::MemoryCases(const std::vector<double>& values, CaseRules rules)
    : _values(values), _rules(rules)
{
    for (int column = 0; column < static_cast<int>(rowColumns); ++column)
        _variables.push_back(variableOf(column, rules));
}

VEXA_InputCaseIterator* MemoryCases::MakeIterator(ErrorMonitor*) const
{
    return std::make_unique<MemoryCaseIterator>(_values).release();
}

} // namespace bench

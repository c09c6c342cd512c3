#include "VexaDataSource.h"

#include <algorithm>
#include <utility>

#include "text/NameCase.h"

VEXA_DataSource::~VEXA_DataSource() = default;
VEXA_InputCaseIterator::~VEXA_InputCaseIterator() = default;
VEXA_CaseBlock::~VEXA_CaseBlock() = default;

int VEXA_DataSource::FindVarIndex(const std::string& name, int firstColumn) const
{
    const WantedName wanted(name);
    for (int column = std::max(firstColumn, 0); column < ColumnCount(); ++column)
        if (wanted.is(GetVariable(column).GetName()))
            return column;
    return -1;
}

namespace {

/// Some columns of an iterator that does not support projections.
class SomeColumns : public VEXA_InputCaseIterator
{
public:
    SomeColumns(std::unique_ptr<VEXA_InputCaseIterator> cases, std::vector<int> columns)
        : _cases(std::move(cases)), _columns(std::move(columns))
    {
    }

    int NextCase() override { return _cases->NextCase(); }
    double GetNumericValue(int column) const override
    {
        return _cases->GetNumericValue(_columns[static_cast<std::size_t>(column)]);
    }
    const char* GetStringValue(int column) const override
    {
        return _cases->GetStringValue(_columns[static_cast<std::size_t>(column)]);
    }
    const OBS* GetObsPointer(int column) const override
    {
        return _cases->GetObsPointer(_columns[static_cast<std::size_t>(column)]);
    }
    long long GetCaseCount() const override { return _cases->GetCaseCount(); }

private:
    std::unique_ptr<VEXA_InputCaseIterator> _cases;
    std::vector<int> _columns;
};

} // namespace

VEXA_InputCaseIterator* VEXA_DataSource::MakeProjectedIterator(const std::vector<int>& columns,
                                                               ErrorMonitor* monitor) const
{
    for (const int column : columns)
        GetVariable(column); // throws if it does not exist
    std::unique_ptr<VEXA_InputCaseIterator> cases(MakeIterator(monitor));
    return std::make_unique<SomeColumns>(std::move(cases), columns).release();
}

#include <utility>

#include "ErrorText.h"
#include "VexaDataViews.h"
#include "data/CaseTable.h"
#include "data/TableCases.h"

namespace {

/// The FROM item of a table whose rows are in the order of some columns.
std::string inOrder(const std::string& table, const std::vector<int>& keys)
{
    if (keys.empty())
        return table;
    std::string order;
    for (const int key : keys)
        order += CaseTable::columnName(static_cast<std::size_t>(key)) + " NULLS FIRST, ";
    return "(SELECT * FROM " + table + " ORDER BY " + order + "rowid)";
}

/// The cases of a source as a relation that outlives their table's maker.
std::shared_ptr<const Relation> copyOf(const VEXA_DataSource& source,
                                       const std::vector<int>& sortKeys, ErrorMonitor* monitor)
{
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(source.ColumnCount()));
    for (int column = 0; column < source.ColumnCount(); ++column)
        widths.push_back(source.GetVariable(column).GetType());
    auto table = std::make_shared<CaseTable>(widths, CaseTableText::Bytes);
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(monitor));
    while (cases->NextCase() != 0) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const int column = static_cast<int>(i);
            if (widths[i] > 0)
                table->setText(
                    i, {cases->GetStringValue(column), static_cast<std::size_t>(widths[i])});
            else
                table->setNumber(i, cases->GetNumericValue(column));
        }
        table->endCase();
    }
    table->finish();
    auto relation = std::make_shared<Relation>();
    relation->name = "the copy of the cases";
    relation->from = inOrder(table->name(), sortKeys);
    for (std::size_t i = 0; i < widths.size(); ++i)
        relation->columns.push_back(
            {CaseTable::columnName(i), widths[i] > 0 ? CFField::String : CFField::Real});
    relation->table = std::move(table);
    return relation;
}

} // namespace

struct TempFileDataStore::Impl
{
    const VEXA_DataSource& source;
    std::vector<int> sortKeys;
    std::shared_ptr<const Relation> relation; ///< null until it is needed
};

TempFileDataStore::TempFileDataStore(const VEXA_DataSource& source, std::vector<int> sortKeys)
    : _impl(std::make_unique<Impl>(Impl{source, std::move(sortKeys), nullptr}))
{
}

TempFileDataStore::~TempFileDataStore() = default;

int TempFileDataStore::ColumnCount() const
{
    return _impl->source.ColumnCount();
}

const VEXA_Variable& TempFileDataStore::GetVariable(int column) const
{
    return _impl->source.GetVariable(column);
}

int TempFileDataStore::GetWeightVarIndex() const
{
    return _impl->source.GetWeightVarIndex();
}

int TempFileDataStore::GetNSplitVars() const
{
    return _impl->source.GetNSplitVars();
}

int TempFileDataStore::GetSplitVarIndex(int position) const
{
    return _impl->source.GetSplitVarIndex(position);
}

VEXA_InputCaseIterator* TempFileDataStore::MakeIterator(ErrorMonitor* monitor) const
{
    if (!_impl->relation)
        _impl->relation = copyOf(_impl->source, _impl->sortKeys, monitor);
    std::vector<int> columns;
    std::vector<CaseColumn> buffers;
    for (int column = 0; column < ColumnCount(); ++column) {
        const VEXA_Variable& variable = GetVariable(column);
        columns.push_back(column);
        // The values are the source's own, already as wide as they are.
        buffers.emplace_back(variable.GetType() > 0 ? CFField::String : CFField::Real,
                             variable.GetType(), variable.GetName(), nullptr);
    }
    return std::make_unique<TableCaseIterator>(_impl->relation, columns, std::move(buffers),
                                               monitor)
        .release();
}

#include <utility>

#include "VexaDataViews.h"
#include "data/CaseCopy.h"
#include "data/CaseTable.h"
#include "data/TableCases.h"

namespace {

std::vector<int> widthsOf(const VEXA_DataSource& source)
{
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(source.ColumnCount()));
    for (int column = 0; column < source.ColumnCount(); ++column)
        widths.push_back(source.GetVariable(column).GetType());
    return widths;
}

std::shared_ptr<const CaseCopy> copyOf(const VEXA_DataSource& source, ErrorMonitor* monitor)
{
    auto copy = std::make_shared<CaseCopy>(widthsOf(source));
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(monitor));
    while (cases->NextCase() != 0)
        copy->add(*cases);
    copy->finish();
    return copy;
}

/// The FROM item of a table sorted by some columns.
std::string inOrder(const std::string& table, const std::vector<int>& keys)
{
    std::string order;
    for (const int key : keys)
        order += CaseTable::columnName(static_cast<std::size_t>(key)) + " NULLS FIRST, ";
    // The row number makes the sort stable.
    return "(SELECT * FROM " + table + " ORDER BY " + order + "rowid)";
}

/// A sorted copy of a source's cases as a relation, which outlives the object that created the
/// table.
std::shared_ptr<const Relation>
sortedCopyOf(const VEXA_DataSource& source, const std::vector<int>& sortKeys, ErrorMonitor* monitor)
{
    const std::vector<int> widths = widthsOf(source);
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
    std::vector<int> sortKeys;
    // Null until first use. Which one is used depends on the sort keys.
    std::shared_ptr<const CaseCopy> copy;
    std::shared_ptr<const Relation> relation;
};

TempFileDataStore::TempFileDataStore(const VEXA_DataSource& source, std::vector<int> sortKeys)
    : VEXA_DataView(source),
      _impl(std::make_unique<Impl>(Impl{std::move(sortKeys), nullptr, nullptr}))
{
}

TempFileDataStore::~TempFileDataStore() = default;

VEXA_InputCaseIterator* TempFileDataStore::MakeIterator(ErrorMonitor* monitor) const
{
    if (_impl->sortKeys.empty()) {
        if (!_impl->copy)
            _impl->copy = copyOf(source(), monitor);
        return std::make_unique<CopiedCases>(_impl->copy).release();
    }
    if (!_impl->relation)
        _impl->relation = sortedCopyOf(source(), _impl->sortKeys, monitor);
    std::vector<int> columns;
    std::vector<CaseColumn> buffers;
    for (int column = 0; column < ColumnCount(); ++column) {
        const VEXA_Variable& variable = GetVariable(column);
        columns.push_back(column);
        // The values already have the source's form and width.
        buffers.emplace_back(variable.GetType() > 0 ? CFField::String : CFField::Real,
                             variable.GetType(), variable.GetName(), nullptr);
    }
    return std::make_unique<TableCaseIterator>(_impl->relation, columns, std::move(buffers),
                                               monitor)
        .release();
}

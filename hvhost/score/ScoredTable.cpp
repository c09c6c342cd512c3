#include "hvhost/score/ScoredTable.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "CFMetaData.h"
#include "HostConversions.h"
#include "RowDataIterator.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/input/NameLookup.h"
#include "scoring/HVTransformScorer.h"

namespace {

/// The number of rows between two checks of the watch.
constexpr long long kRowsBetweenLooks = 1024;

std::vector<std::string> namesOf(const CFMetaData& model)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        names.push_back(model.GetField(i)->GetName());
    return names;
}

} // namespace

ScoredTable::ScoredTable(EmbeddedHV::RowDataIterator& rows, const CFMetaData& model,
                         const std::vector<std::string>& keep,
                         const std::vector<ScoringModel::Variable>& targets)
    : _rows(rows)
{
    const std::vector<std::string> known = namesOf(model);
    for (const std::string& name : keep)
        keepField(model, placeOfName(name, known, {"--keep " + name}));
    for (std::size_t i = 0; keep.empty() && i < model.FieldCount(); ++i)
        keepField(model, i);
    for (const ScoringModel::Variable& target : targets) {
        const auto isNamed = [&target](const ResultTable::Column& column) {
            return column.name == target.name;
        };
        if (std::any_of(_columns.begin(), _columns.end(), isNamed))
            throw CommandFault(ExitStatus::Usage,
                               target.name + ": two columns would have this name",
                               "--keep and --target say which variables and results there are");
        _columns.push_back({target.name, target.storage});
    }
}

void ScoredTable::keepField(const CFMetaData& model, std::size_t index)
{
    const CFField& field = *model.GetField(index);
    _kept.push_back(index);
    _columns.push_back({field.GetName(), field.GetStorage()});
}

ResultTable::Row ScoredTable::scoredRow(HVTransformScorer& scorer)
{
    ResultTable::Row row;
    row.reserve(_columns.size());
    for (const std::size_t field : _kept)
        row.push_back(cellText(_rows, field, _columns[row.size()]));
    bool isFailed = !scorer.ScoreRecord();
    for (const double value : scorer.GetTargetValues()) {
        isFailed = isFailed || std::isnan(value);
        const CFField::StorageType storage = _columns[row.size()].storage;
        row.push_back(
            HVTransformScorer::IsValidDouble(value)
                ? std::optional(numberText(NumericStorageStatToCF(value, storage), storage))
                : std::nullopt);
    }
    if (isFailed)
        ++_failedCount;
    return row;
}

void ScoredTable::write(HVTransformScorer& scorer, const TableLook& look,
                        const InterruptWatch& watch, std::ostream& out)
{
    // csv rows are written one by one. The other forms need all rows first.
    const bool isStreamed = look.form == "csv";
    ResultTable table{_columns, {}, 0};
    if (isStreamed)
        printCsvNames(_columns, out);
    while (_rows.nextRecord() == EmbeddedHV::RowDataIterator::RecordAvailable) {
        if (_rowCount++ % kRowsBetweenLooks == 0)
            watch.check();
        if (isStreamed)
            printCsvRow(scoredRow(scorer), out);
        else
            table.rows.push_back(scoredRow(scorer));
    }
    if (!isStreamed)
        printTable(table, look, out);
}

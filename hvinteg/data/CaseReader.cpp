#include "data/CaseReader.h"

#include <algorithm>

#include "MultiByte.h"

using EmbeddedHV::RowDataIterator;

void CaseReader::start(const VEXA_DataSource& view, const CFMetaData& metadata)
{
    const std::size_t columns = static_cast<std::size_t>(view.ColumnCount());
    rules.fields.clear();
    for (std::size_t i = 0; i < metadata.FieldCount(); ++i) {
        RecordField field;
        // The case count is the only field without a column.
        field.isCaseCount = i >= columns;
        if (!field.isCaseCount) {
            field.storage = metadata.GetField(i)->GetStorage();
            field.variable = &view.GetVariable(static_cast<int>(i));
            field.hasUserMissing = field.variable->HasMissingValues();
            field.width = field.variable->GetType();
        }
        rules.fields.push_back(field);
    }
    if (rules.adjust != kWeightNone)
        // The view's index: a projection renumbers the columns.
        rules.weightField = view.GetWeightVarIndex();
    rules.trimsTabs = qUTF8mode();
    rules.settle();
    slots.clear(rules.fields.size());
    cases.reset(view.MakeIterator(nullptr));
}

bool CaseReader::isCancelled()
{
    if (stopProcessor && stopProcessor->CheckCancel())
        cancelled.isSet = true;
    if (cancelled.isSet)
        status = RowDataIterator::Cancelled;
    return status == RowDataIterator::Cancelled;
}

unsigned int CaseReader::nextRecord()
{
    isCancelled();
    if (status != RowDataIterator::RecordAvailable)
        return status;
    while (cases->NextCase() != 0) {
        if (_isFirstPass)
            ++counts.cases;
        const double weight = slots.fill(*cases, rules, _isFirstPass ? &counts : nullptr);
        if (_isFirstPass)
            // Also without a weight: the counts include cases that are left out.
            counts.judge(weight);
        if (weight > 0)
            return status;
    }
    return endOfData();
}

unsigned int CaseReader::endOfData()
{
    cases.reset();
    status = RowDataIterator::EndOfData;
    return status;
}

bool CaseReader::servesBlocks(const std::vector<std::size_t>& fields) const
{
    return rules.weightField < 0 && blocks() != nullptr &&
           std::all_of(fields.begin(), fields.end(),
                       [this](std::size_t field) { return rules.isIndependent(field); });
}

unsigned int CaseReader::nextRecords(const std::vector<std::size_t>& fields,
                                     const std::vector<double*>& columns, std::size_t most,
                                     std::size_t& count)
{
    count = 0;
    isCancelled();
    while (count < most && status == RowDataIterator::RecordAvailable) {
        VEXA_CaseBlock& block = *blocks();
        const std::size_t ahead = std::min(block.CasesAhead(), most - count);
        if (ahead == 0)
            return endOfData();
        const std::size_t taken = casesUntilCancel(ahead);
        for (std::size_t i = 0; i < fields.size(); ++i)
            copyField(block, fields[i], taken, columns[i] + count);
        block.Skip(taken);
        if (_isFirstPass)
            counts.takeUnweighted(taken);
        count += taken;
        if (count < most && taken == ahead)
            isCancelled();
    }
    return status;
}

std::size_t CaseReader::casesUntilCancel(std::size_t ahead)
{
    std::size_t taken = 1;
    while (taken < ahead && !isCancelled())
        ++taken;
    return taken;
}

void CaseReader::copyField(const VEXA_CaseBlock& block, std::size_t field, std::size_t count,
                           double* column) const
{
    const OBS* const values = block.NumbersAhead(static_cast<int>(field));
    const bool isPlain = rules.fields[field].isPlain;
    for (std::size_t row = 0; row < count; ++row)
        column[row] = isPlain ? values[row].number : rules.converted(values[row].number, field);
}

unsigned int CaseReader::rewind(const VEXA_DataSource& view)
{
    isCancelled();
    if (counts.cases >= 1 && cases) {
        if (_isFirstPass)
            while (nextRecord() == RowDataIterator::RecordAvailable && !cancelled.isSet) {
            }
        cases.reset();
    }
    if (status == RowDataIterator::Cancelled)
        return status;
    if (!cases) {
        // The texts of the last record were released with the cases. If the cases cannot be read
        // again, the reader stays at its end.
        slots.clear(rules.fields.size());
        status = RowDataIterator::EndOfData;
        cases.reset(view.MakeIterator(nullptr));
        _isFirstPass = false;
    }
    status = RowDataIterator::RecordAvailable;
    return status;
}

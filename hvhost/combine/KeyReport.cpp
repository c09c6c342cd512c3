#include "hvhost/combine/KeyReport.h"

#include <cstdlib>

#include "CFMetaData.h"
#include "RowDataIterator.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIObjectManager.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/ReadableFile.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLJoin.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"

namespace {

// Names of intermediate fields. A key of this name is unlikely.
constexpr const char* kRecords = "hvhost records";
constexpr const char* kPartners = "hvhost partners";

/// A field of the matched keys that is summed, and its expression.
struct Sum
{
    const char* name;
    const char* expression;
};
// As reals, because a product may exceed 64 bits.
constexpr Sum kSums[] = {
    {"repeated keys", "if (x.`hvhost partners` > 1) 1.0 else 0.0"},
    {"repeated records", "if (x.`hvhost partners` > 1) toReal(x.`hvhost records`) else 0.0"},
    {"repeated rows",
     "if (x.`hvhost partners` > 1) 1.0 * x.`hvhost records` * x.`hvhost partners` else 0.0"}};

EmbeddedHV::RowDataIterator& rowsOf(HVRunner& runner, const HVSimpleFile& file)
{
    EmbeddedHV::RowDataIterator* const rows = runner.getOutputIterator(file.GetFileName());
    if (rows == nullptr)
        throw CommandFault(ExitStatus::JobFailed, "the report of the keys cannot be read");
    return *rows;
}

double numberOf(const std::optional<std::string>& cell)
{
    return cell ? std::strtod(cell->c_str(), nullptr) : 0;
}

KeyReport::Matched readMatched(EmbeddedHV::RowDataIterator& rows)
{
    const ResultTable table = readTable(rows, 0);
    const ResultTable::Row& sums = table.rows.at(0);
    return {numberOf(sums.at(0)), numberOf(sums.at(1)), numberOf(sums.at(2)), numberOf(sums.at(3))};
}

KeyReport::Unmatched readUnmatched(EmbeddedHV::RowDataIterator& rows, long long most)
{
    KeyReport::Unmatched result;
    const CFMetaData model(rows.getDataModel());
    std::vector<ResultTable::Column>& columns = result.shown.columns;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        columns.push_back({model.GetField(i)->GetName(), model.GetField(i)->GetStorage()});
    columns.back().name = "records";
    while (rows.nextRecord() == EmbeddedHV::RowDataIterator::RecordAvailable) {
        const auto count = cellText(rows, columns.size() - 1, columns.back());
        ++result.keys;
        result.records += numberOf(count);
        if (most >= 0 && result.keys > most)
            continue;
        ResultTable::Row row;
        for (std::size_t i = 0; i + 1 < columns.size(); ++i)
            row.push_back(cellText(rows, i, columns[i]));
        row.push_back(count);
        result.shown.rows.push_back(std::move(row));
    }
    rows.dispose(JNIObjectManager::getManager()->getEnv());
    return result;
}

} // namespace

/// The builders, which refer to each other.
struct KeyReport::Steps
{
    template <class Step>
    Step& add(std::unique_ptr<Step> step)
    {
        Step& added = *step;
        all.push_back(std::move(step));
        return added;
    }

    std::vector<std::unique_ptr<HVLFunction>> all;
    std::vector<HVLFunction*> statements;
};

KeyReport::KeyReport(JNIHvlProgram& program, HVLFunction& left, HVLFunction& right,
                     const std::vector<JoinKey>& keys)
    : _program(program), _steps(std::make_unique<Steps>())
{
    HVLFunction& leftKeys = addKeys(left, leftNames(keys), kRecords);
    HVLFunction& rightKeys = addKeys(right, rightNames(keys), kPartners);
    addMatched(leftKeys, rightKeys, keys);
    addUnmatched(leftKeys, rightKeys, keys, 0, _leftFile);
    addUnmatched(leftKeys, rightKeys, keys, 1, _rightFile);
}

KeyReport::~KeyReport() = default;

/// The combinations of keys of one side, each once, with the number of its records.
HVLFunction& KeyReport::addKeys(HVLFunction& records, const std::vector<std::string>& names,
                                const char* count)
{
    HVLAggregate& keys = _steps->add(std::make_unique<HVLAggregate>(&_program));
    for (const std::string& name : names)
        keys.AddAggregate("key", name, name);
    keys.AddAggregate("count", "", count);
    keys.AddPredFunction(&records);
    return keys;
}

void KeyReport::addMatched(HVLFunction& left, HVLFunction& right, const std::vector<JoinKey>& keys)
{
    HVLJoin& join = _steps->add(std::make_unique<HVLJoin>(&_program));
    join.AddPredFunction(&left, "left");
    join.AddPredFunction(&right, "right");
    for (const JoinKey& key : keys)
        join.AddMatchField(0, key.left, 1, key.right);
    join.SetOutputFieldNames(0, {kRecords});
    join.SetOutputFieldNames(1, {kPartners});
    HVLFunction* last = &join;
    HVLAggregate& sums = _steps->add(std::make_unique<HVLAggregate>(&_program));
    sums.AddAggregate("count", "", "keys");
    for (const Sum& sum : kSums) {
        HVLExpressionFun& derive = _steps->add(std::make_unique<HVLExpressionFun>(&_program));
        derive.SetDeriveField(sum.name, _program.createHvlExpression(sum.expression, nullptr));
        derive.AddPredFunction(last);
        last = &derive;
        sums.AddAggregate("sum", sum.name, sum.name);
    }
    sums.AddPredFunction(last);
    addWrite(sums, _matchedFile);
}

/// A missing key matches nothing, so it is among these.
void KeyReport::addUnmatched(HVLFunction& left, HVLFunction& right,
                             const std::vector<JoinKey>& keys, std::size_t side,
                             const HVSimpleFile& file)
{
    HVLJoin& join = _steps->add(std::make_unique<HVLJoin>(&_program));
    join.AddPredFunction(&left, "left");
    join.AddPredFunction(&right, "right");
    join.SetJoinType(HVLJoin::Anti);
    join.AddNonMatchingSource(side);
    for (const JoinKey& key : keys)
        join.AddMatchField(0, key.left, 1, key.right);
    addWrite(join, file);
}

void KeyReport::addWrite(HVLFunction& last, const HVSimpleFile& file)
{
    HVLWrite& write = _steps->add(std::make_unique<HVLWrite>(&_program));
    write.WriteHVBF(file.GetFileName());
    write.AddPredFunction(&last);
    _steps->statements.push_back(&write);
}

std::vector<HVLFunction*> KeyReport::statements() const
{
    return _steps->statements;
}

std::vector<JobOrigin::File> KeyReport::origins() const
{
    std::vector<JobOrigin::File> files;
    for (const HVSimpleFile* file : {&_matchedFile, &_leftFile, &_rightFile})
        files.push_back({nativePath(file->GetGenericPath()), kTemporaryFile});
    return files;
}

void KeyReport::read(HVRunner& runner, long long most)
{
    _matched = readMatched(rowsOf(runner, _matchedFile));
    _left = readUnmatched(rowsOf(runner, _leftFile), most);
    _right = readUnmatched(rowsOf(runner, _rightFile), most);
}

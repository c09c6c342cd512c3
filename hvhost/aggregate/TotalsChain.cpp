#include "hvhost/aggregate/TotalsChain.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "bridge/JNIHvlProgram.h"
#include "datafile/FieldNames.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/job/EngineStep.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ResultWords.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLUnion.h"

namespace {

/// A field that sorts totals after the groups that they sum up: 1 if the record sums up the key.
std::string flagOf(std::size_t key)
{
    return "hvhost total " + std::to_string(key);
}

void refuseTotalField(const std::vector<std::string>& results)
{
    if (std::ranges::any_of(results, [](const std::string& name) {
            return datafile::isSameName(name, kTotalField);
        }))
        throw CommandFault(ExitStatus::Usage,
                           "--totals: there is a result \"" + std::string(kTotalField) +
                               "\" already",
                           "--stat FUNCTION:FIELD:NAME gives it another name");
}

} // namespace

TotalsChain::TotalsChain(JNIHvlProgram& program, HVLFunction& input, const RecordNames& names,
                         const std::vector<std::string>& by,
                         const std::vector<std::string>& statistics, const std::string& weight,
                         bool totals)
    : _program(program)
{
    for (std::size_t level = 0; level <= (totals ? by.size() : 0); ++level)
        _levels.push_back(std::make_unique<AggregateChain>(
            program, input, names,
            std::vector<std::string>(by.begin(), by.end() - static_cast<std::ptrdiff_t>(level)),
            statistics, weight));
    _last = _levels.front()->last();
    if (totals)
        addTotals(by.size());
}

TotalsChain::~TotalsChain() = default;

void TotalsChain::addTotals(std::size_t keys)
{
    refuseTotalField(_levels.front()->names());
    auto all = std::make_unique<HVLUnion>(&_program);
    for (std::size_t level = 0; level < _levels.size(); ++level) {
        _last = _levels[level]->last();
        markLevel(level, keys);
        all->AddPredFunction(_last, "level" + std::to_string(level));
    }
    _steps.push_back(std::move(all));
    _last = _steps.back().get();
    sort(keys);
}

void TotalsChain::markLevel(std::size_t level, std::size_t keys)
{
    derive(kTotalField, std::to_string(level));
    for (std::size_t key = 0; key < keys; ++key)
        derive(flagOf(key), key + level >= keys ? "1" : "0");
}

void TotalsChain::sort(std::size_t keys)
{
    std::vector<std::string> fields = _levels.front()->names();
    nlohmann::json order = nlohmann::json::array();
    for (std::size_t key = 0; key < keys; ++key) {
        order.push_back({{"name", flagOf(key)}});
        order.push_back({{"name", fields[key]}});
    }
    append(
        std::make_unique<EngineStep>(&_program, "sortRecords", nlohmann::json{{"fields", order}}));
    fields.insert(fields.begin() + static_cast<std::ptrdiff_t>(keys), kTotalField);
    auto keep = std::make_unique<HVLFilterFields>(&_program);
    keep->KeepFieldNames(fields);
    append(std::move(keep));
}

void TotalsChain::append(std::unique_ptr<HVLFunction> step)
{
    step->AddPredFunction(_last);
    _steps.push_back(std::move(step));
    _last = _steps.back().get();
}

void TotalsChain::derive(const std::string& name, const std::string& value)
{
    auto step = std::make_unique<HVLExpressionFun>(&_program);
    step->SetDeriveField(name, _program.createHvlExpression(value, nullptr));
    append(std::move(step));
}

std::vector<JobOrigin::Expression> TotalsChain::composed() const
{
    std::vector<JobOrigin::Expression> all;
    for (const auto& level : _levels)
        std::ranges::copy(level->composed(), std::back_inserter(all));
    return all;
}

void showTotals(ResultTable& table)
{
    const std::size_t keys = table.keyCount;
    const auto place = static_cast<std::ptrdiff_t>(keys);
    const std::string all = word("(all)");
    for (std::size_t key = 0; key < keys; ++key)
        table.columns[key].storage = CFField::String;
    table.columns.erase(table.columns.begin() + place);
    for (ResultTable::Row& row : table.rows) {
        const auto level = static_cast<std::size_t>(std::atoll(row[keys].value_or("0").c_str()));
        std::fill(row.begin() + static_cast<std::ptrdiff_t>(keys - level), row.begin() + place,
                  all);
        row.erase(row.begin() + place);
    }
}

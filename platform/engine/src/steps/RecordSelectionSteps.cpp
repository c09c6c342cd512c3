#include <cstdint>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/ListText.h"
#include "base/NumberText.h"
#include "expression/FieldTypes.h"
#include "steps/StepCall.h"

// Steps that order and select whole records. Each keeps the order of its input unless it says
// otherwise.

namespace EmbeddedHV {
namespace {

/// The input of a step with a number of each record.
struct Numbered
{
    explicit Numbered(const StepCall& call)
        : dialect(call.context.dialect), columns(dialect.columns(call.input()->fields)),
          number(dialect.name(unusedName(call.input()->fields, "hv_record")))
    {
    }

    /// Numbers from 1, on which draws depend.
    std::string counted(const std::string& input) const { return dialect.numbered(input, number); }
    /// Numbers that only have the order of the records.
    std::string ordered(const std::string& input) const { return dialect.ordered(input, number); }

    const Dialect& dialect;
    std::string columns; ///< of the input, for the SELECT of the result
    std::string number;  ///< the column with the number
};

StepResult numberedStep(StepCall& call, std::function<std::string(const std::string&)> select)
{
    Fields fields = call.takeFields();
    return {derivedNode(std::move(fields), {call.input()},
                        [select = std::move(select)](const std::vector<std::string>& inputs) {
                            return select(inputs[0]);
                        }),
            nullptr};
}

std::int64_t neededCount(const Settings& settings, const std::string& key)
{
    const auto count = settings.integer(key);
    if (!count)
        settings.neededText(key); // throws that the setting is missing
    if (*count < 0)
        settings.refuse(key, "is " + std::to_string(*count) + ", not 0 or more");
    return *count;
}

/// A term of ORDER BY. Missing values are last, whatever the direction; so is a Real that is not a
/// number.
std::string orderTerm(const StepCall& call, const Settings& entry)
{
    const CFField& field = call.inputField(entry.neededText("name"), entry.pathOf("name"));
    const Dialect& dialect = call.context.dialect;
    const std::string column = dialect.name(field.GetName());
    const bool descends = entry.flag("descending").value_or(false);
    entry.reportOthers(call.context.message);
    return (field.GetStorage() == CFField::Real ? dialect.orderedReal(column) : column) +
           (descends ? " DESC" : " ASC") + " NULLS LAST";
}

double neededPercent(const Settings& settings)
{
    const auto percent = settings.number("percent");
    if (!percent)
        throw JobError(
            errors::kSettingMissing,
            {.step = settings.step(), .setting = "count", .what = "or \"percent\" is missing"});
    const double value =
        percent->IsReal() ? percent->GetReal() : static_cast<double>(percent->GetInteger());
    if (!(value >= 0 && value <= 100))
        settings.refuse("percent", "must be from 0 to 100");
    return value;
}

} // namespace

/// Sorts the records. Records with equal values keep their order.
StepResult planSortRecords(StepCall& call)
{
    const Settings settings = call.settings();
    const Json& entries = settings.neededList("fields");
    if (entries.empty())
        settings.refuse("fields", "is empty: there is nothing to sort by");
    std::vector<std::string> terms;
    for (std::size_t i = 0; i < entries.size(); ++i)
        terms.push_back(orderTerm(call, settings.objectAt(entries, "fields", i)));
    settings.reportOthers(call.context.message);
    const Numbered numbered(call);
    const std::string order = base::joined(terms, ", ");
    return numberedStep(call, [=](const std::string& input) {
        return "SELECT " + numbered.columns + " FROM " + numbered.ordered(input) + " ORDER BY " +
               order + ", " + numbered.number;
    });
}

/// Keeps the first records.
StepResult planLimitRecords(StepCall& call)
{
    const Settings settings = call.settings();
    const std::int64_t count = neededCount(settings, "count");
    settings.reportOthers(call.context.message);
    const Numbered numbered(call);
    return numberedStep(call, [=](const std::string& input) {
        return numbered.dialect.leading({numbered.columns, input, "", numbered.number, count});
    });
}

/// Draws records at random, without repetition.
StepResult planSampleRecords(StepCall& call)
{
    const Settings settings = call.settings();
    const Numbered numbered(call);
    const std::string draw =
        numbered.dialect.draw(numbered.number, settings.integer("seed").value_or(0));
    if (settings.has("count")) {
        const std::int64_t count = neededCount(settings, "count");
        if (settings.has("percent"))
            settings.refuse("percent", "excludes the setting \"count\"");
        settings.reportOthers(call.context.message);
        const std::string all = numbered.columns + ", " + numbered.number;
        const std::string order = draw + ", " + numbered.number;
        const std::string rank = numbered.dialect.name(unusedName(call.input()->fields, "hv_rank"));
        return numberedStep(call, [=](const std::string& input) {
            return "SELECT " + numbered.columns + " FROM (" +
                   numbered.dialect.leading({all, numbered.counted(input), order, rank, count}) +
                   ") ORDER BY " + numbered.number;
        });
    }
    const std::string share = base::shortestNumber(neededPercent(settings) / 100);
    settings.reportOthers(call.context.message);
    return numberedStep(call, [=](const std::string& input) {
        return "SELECT " + numbered.columns + " FROM " + numbered.counted(input) + " WHERE " +
               numbered.dialect.drawnShare(draw) + " < " + share;
    });
}

/// Keeps the first record of each combination of values. Missing values are equal here.
StepResult planDistinctRecords(StepCall& call)
{
    const Json none = Json::object();
    const Settings settings(call.configuration.is_null() ? none : call.configuration, call.name);
    std::vector<std::string> fields;
    if (settings.has("fields")) {
        const Json& names = settings.neededList("fields");
        for (std::size_t i = 0; i < names.size(); ++i)
            fields.push_back(call.context.dialect.name(
                call.inputField(settings.textAt(names, "fields", i)).GetName()));
    }
    settings.reportOthers(call.context.message);
    const Numbered numbered(call);
    const std::string keys = fields.empty() ? numbered.columns : base::joined(fields, ", ");
    return numberedStep(call, [=](const std::string& input) {
        return numbered.dialect.firstRecords(numbered.columns, numbered.ordered(input), keys,
                                             numbered.number) +
               " ORDER BY " + numbered.number;
    });
}

} // namespace EmbeddedHV

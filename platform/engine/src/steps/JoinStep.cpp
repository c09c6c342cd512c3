#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/ListText.h"
#include "base/NearestName.h"
#include "datafile/FieldNames.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "expression/ValueTypes.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

std::string aliasOf(std::size_t input)
{
    return "t" + std::to_string(input);
}

/// The parts of a join's SELECT.
struct Join
{
    std::string type;                                 ///< as in the configuration
    std::vector<std::vector<std::string>> conditions; ///< by the later of the two inputs
    std::vector<bool> keepsUnmatched;
    std::vector<std::pair<std::size_t, CFField>> outputs; ///< each with its input
    std::vector<std::string> columns;                     ///< of the outputs
    bool keepsOrder = false;
};

/// Reads the configuration of a join and checks it against the inputs.
class JoinReader
{
public:
    explicit JoinReader(StepCall& call) : _call(call), _settings(call.settings()) {}

    Join read()
    {
        _join.conditions.resize(_call.inputs.size());
        _join.keepsUnmatched.assign(_call.inputs.size(), false);
        readType();
        readMatchFields();
        readUnmatched();
        readOutputFields();
        nameColumns();
        _join.keepsOrder = _settings.flag("keepOrder").value_or(false);
        _settings.reportOthers(_call.context.message);
        return std::move(_join);
    }

private:
    void readType();
    void readMatchFields();
    void readUnmatched();
    void readOutputFields();
    void addMatch(const Settings& match);
    void addColumn(std::size_t input, const CFField& field);
    void nameColumns();
    std::size_t inputOf(const std::string& tag, const std::string& key) const;
    /// Qualified by the input, because several inputs may have fields of the same name.
    std::string columnOf(std::size_t input, const std::string& field) const
    {
        return aliasOf(input) + "." + _call.context.dialect.name(field);
    }
    const CFField& taggedField(const StepInput& input, const std::string& field) const;

    StepCall& _call;
    Settings _settings;
    Join _join;
};

std::size_t JoinReader::inputOf(const std::string& tag, const std::string& key) const
{
    for (std::size_t i = 0; i < _call.inputs.size(); ++i)
        if (_call.inputs[i].tag == tag)
            return i;
    _settings.refuse(key, "names \"" + tag + "\", which is the tag of no input" +
                              base::suggestion(tag, _call.inputs, &StepInput::tag));
}

const CFField& JoinReader::taggedField(const StepInput& input, const std::string& field) const
{
    return fieldOf(input.node->fields, field,
                   {.step = _call.name, .owner = "the input \"" + input.tag + "\""});
}

void JoinReader::readType()
{
    constexpr std::string_view kTypes[] = {"Inner", "Outer", "Anti", "Cartesian"};
    _join.type = _settings.text("joinType").value_or("Inner");
    if (std::find(std::begin(kTypes), std::end(kTypes), _join.type) == std::end(kTypes))
        _settings.refuse("joinType",
                         "is \"" + _join.type + "\"; known are Inner, Outer, Anti and Cartesian");
    if ((_join.type == "Outer" || _join.type == "Anti") && _call.inputs.size() > 2)
        throw JobError(errors::kStepInput,
                       {.step = _call.name,
                        .what = "a join of type " + _join.type + " takes two inputs, not " +
                                std::to_string(_call.inputs.size())});
}

/// Adds a match of two fields from two inputs. Their types must be comparable.
void JoinReader::addMatch(const Settings& match)
{
    std::vector<std::pair<std::size_t, const CFField*>> sides;
    for (const StepInput& input : _call.inputs)
        if (const auto field = match.text(input.tag))
            sides.emplace_back(inputOf(input.tag, "matchFields"), &taggedField(input, *field));
    if (sides.size() != 2)
        _settings.refuse("matchFields", "must name a field of two inputs in each element");
    const auto& [left, leftField] = sides[0];
    const auto& [right, rightField] = sides[1];
    if (!commonType(valueTypeOf(leftField->GetStorage()), valueTypeOf(rightField->GetStorage())))
        _settings.refuse("matchFields", "matches \"" + leftField->GetName() + "\", which is " +
                                            typeWordOf(leftField->GetStorage()) + ", with \"" +
                                            rightField->GetName() + "\", which is " +
                                            typeWordOf(rightField->GetStorage()));
    // The condition belongs to the later input: when it is joined, both columns exist.
    _join.conditions[std::max(left, right)].push_back(columnOf(left, leftField->GetName()) + " = " +
                                                      columnOf(right, rightField->GetName()));
    match.reportOthers(_call.context.message);
}

void JoinReader::readMatchFields()
{
    if (_join.type == "Cartesian") {
        if (_settings.has("matchFields"))
            _settings.neededList("matchFields");
        return;
    }
    const Json& matches = _settings.neededList("matchFields");
    for (std::size_t i = 0; i < matches.size(); ++i)
        addMatch(_settings.objectAt(matches, "matchFields", i));
    for (std::size_t i = 1; i < _call.inputs.size(); ++i)
        if (_join.conditions[i].empty())
            _settings.refuse("matchFields", "does not match the input \"" + _call.inputs[i].tag +
                                                "\" with one before it");
}

void JoinReader::readUnmatched()
{
    if (!_settings.has("nonMatchingSources")) {
        // By default an outer join keeps all records, and an anti join returns those of the first
        // input.
        std::fill(_join.keepsUnmatched.begin(), _join.keepsUnmatched.end(), _join.type == "Outer");
        _join.keepsUnmatched[0] = _join.type == "Outer" || _join.type == "Anti";
        return;
    }
    if (_join.type != "Outer" && _join.type != "Anti")
        _call.context.message(
            errors::kSettingIgnored,
            {.step = _call.name,
             .setting = "nonMatchingSources",
             .what = "has no meaning in a join of type " + _join.type + " and is ignored"});
    const Json& tags = _settings.neededList("nonMatchingSources");
    for (std::size_t i = 0; i < tags.size(); ++i)
        _join.keepsUnmatched[inputOf(_settings.textAt(tags, "nonMatchingSources", i),
                                     "nonMatchingSources")] = true;
    if (_join.type == "Anti" &&
        std::count(_join.keepsUnmatched.begin(), _join.keepsUnmatched.end(), true) != 1)
        _settings.refuse("nonMatchingSources", "must name one input in a join of type Anti");
}

void JoinReader::addColumn(std::size_t input, const CFField& field)
{
    _join.outputs.emplace_back(input, field);
}

/// A field whose name an earlier input has already gets a number, as duplicate columns of a file
/// do. A field that one input outputs twice is an error.
void JoinReader::nameColumns()
{
    std::map<std::size_t, Fields> ofInput;
    std::vector<std::string> names;
    for (const auto& [input, field] : _join.outputs) {
        refuseDuplicate(ofInput[input], field.GetName(), _call.name);
        ofInput[input].push_back(field);
        names.push_back(field.GetName());
    }
    const std::vector<std::string> unique = datafile::uniqueNames(names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto& [input, field] = _join.outputs[i];
        _join.columns.push_back(columnOf(input, names[i]) + " AS " +
                                _call.context.dialect.name(unique[i]));
        if (unique[i] == names[i])
            continue;
        field.SetName(unique[i]);
        _call.context.message(errors::kFieldRenamed,
                              {.step = _call.name,
                               .field = names[i],
                               .name = unique[i],
                               .what = "the field \"" + names[i] + "\" of the input \"" +
                                       _call.inputs[input].tag + "\" becomes \"" + unique[i] +
                                       "\", because an earlier input has a field of this name"});
    }
}

void JoinReader::readOutputFields()
{
    const Json none = Json::object();
    const Settings output = _settings.has("outputFields")
                                ? _settings.neededObject("outputFields")
                                : Settings(none, _call.name, "outputFields");
    for (std::size_t i = 0; i < _call.inputs.size(); ++i) {
        const StepInput& input = _call.inputs[i];
        const bool dropped = _join.type == "Anti" && !_join.keepsUnmatched[i];
        if (!output.has(input.tag))
            continue;
        const Json& names = output.neededList(input.tag);
        if (dropped && !names.empty())
            output.refuse(input.tag, "names fields of an input whose records an Anti join drops");
        for (std::size_t name = 0; name < names.size(); ++name)
            addColumn(i, taggedField(input, output.textAt(names, input.tag, name)));
    }
    output.reportOthers(_call.context.message);
    if (!_join.outputs.empty())
        return;
    for (std::size_t i = 0; i < _call.inputs.size(); ++i)
        if (_join.type != "Anti" || _join.keepsUnmatched[i])
            for (const CFField& field : _call.inputs[i].node->fields)
                addColumn(i, field);
}

const char* outerJoin(const Join& join)
{
    if (join.keepsUnmatched[0] && join.keepsUnmatched[1])
        return " FULL JOIN ";
    if (join.keepsUnmatched[0])
        return " LEFT JOIN ";
    return join.keepsUnmatched[1] ? " RIGHT JOIN " : " JOIN ";
}

/// The inputs of a join's SELECT. Because a database joins on several threads, a join that keeps
/// the order numbers the records of its inputs and sorts the result by these numbers.
class JoinInputs
{
public:
    /// `numbers` are the columns for the numbers; empty if the result may have any order.
    JoinInputs(const Dialect& dialect, const std::vector<std::string>& froms,
               const std::vector<std::string>& numbers)
        : _dialect(dialect), _froms(froms), _numbers(numbers)
    {
    }

    std::string from(std::size_t input) const
    {
        if (_numbers.empty())
            return plain(input);
        return _dialect.ordered(_froms[input], _numbers[input]) + " AS " + aliasOf(input);
    }
    /// An input that contributes no records.
    std::string plain(std::size_t input) const { return _froms[input] + " AS " + aliasOf(input); }
    /// The ORDER BY for all inputs; empty if the result may have any order.
    std::string order() const
    {
        std::vector<std::string> terms;
        for (std::size_t i = 0; i < _numbers.size(); ++i)
            terms.push_back(numberOf(i) + " NULLS LAST");
        return terms.empty() ? "" : " ORDER BY " + base::joined(terms, ", ");
    }
    /// The ORDER BY for one input.
    std::string order(std::size_t input) const
    {
        return _numbers.empty() ? "" : " ORDER BY " + numberOf(input);
    }
    std::size_t count() const { return _froms.size(); }

private:
    std::string numberOf(std::size_t input) const { return aliasOf(input) + "." + _numbers[input]; }

    const Dialect& _dialect;
    const std::vector<std::string>& _froms;
    const std::vector<std::string>& _numbers;
};

std::string antiJoin(const Join& join, const JoinInputs& inputs)
{
    const std::size_t kept = join.keepsUnmatched[0] ? 0 : 1;
    // Not NOT IN: one missing value on the other side would make its result empty.
    return "SELECT " + base::joined(join.columns, ", ") + " FROM " + inputs.from(kept) +
           " WHERE NOT EXISTS (SELECT 1 FROM " + inputs.plain(1 - kept) + " WHERE " +
           base::joined(join.conditions[1], " AND ") + ")" + inputs.order(kept);
}

std::string selectOf(const Join& join, const JoinInputs& inputs)
{
    if (join.type == "Anti")
        return antiJoin(join, inputs);
    std::string from = inputs.from(0);
    for (std::size_t i = 1; i < inputs.count(); ++i) {
        if (join.type == "Cartesian")
            from += " CROSS JOIN " + inputs.from(i);
        else
            from += (join.type == "Outer" ? outerJoin(join) : " JOIN ") + inputs.from(i) + " ON " +
                    base::joined(join.conditions[i], " AND ");
    }
    return "SELECT " + base::joined(join.columns, ", ") + " FROM " + from + inputs.order();
}

} // namespace

/// Joins records of several inputs. A missing value matches nothing.
StepResult planJoin(StepCall& call)
{
    if (call.inputs.size() < 2)
        throw JobError(errors::kStepInput,
                       {.step = call.name, .what = "a join takes at least two inputs, with tags"});
    const Dialect& dialect = call.context.dialect;
    Join join = JoinReader(call).read();
    Fields fields;
    for (const auto& [input, field] : join.outputs)
        fields.push_back(field);
    std::vector<NodePtr> inputs;
    std::vector<std::string> numbers;
    for (const StepInput& input : call.inputs) {
        inputs.push_back(input.node);
        if (join.keepsOrder)
            numbers.push_back(dialect.name(unusedName(input.node->fields, "hv_record")));
    }
    return {derivedNode(std::move(fields), std::move(inputs),
                        [join, numbers, &dialect](const std::vector<std::string>& froms) {
                            return selectOf(join, {dialect, froms, numbers});
                        }),
            nullptr};
}

} // namespace EmbeddedHV

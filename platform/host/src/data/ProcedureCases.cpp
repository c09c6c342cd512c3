#include "data/ProcedureCases.h"

#include <cstring>

#include "base/NumberText.h"
#include "data/CaseText.h"

namespace {

/// The text of a value in output: its label, if it has one.
std::string shown(const VEXA_Variable& variable, const std::vector<OBS>& value)
{
    if (variable.GetType() == 0) {
        const double number = value.front().number;
        if (number == kSystemMissing)
            return ".";
        const char* label = variable.GetValueLabels().GetLabel(number);
        return label ? label : base::shortestNumber(number);
    }
    const std::string_view whole(value.front().text, static_cast<std::size_t>(variable.GetType()));
    const std::string text(whole.substr(0, trimmedLength(whole)));
    const char* label = variable.GetValueLabels().GetLabel(text);
    return label ? label : text;
}

} // namespace

ProcedureCases::ProcedureCases(std::unique_ptr<VEXA_InputCaseIterator> cases, Group group)
    : _cases(std::move(cases)), _group(std::move(group))
{
}

int ProcedureCases::NextCase()
{
    if (!_cases || _cases->NextCase() == 0)
        return 0;
    // The first case starts a group but ends none.
    if (_values.empty())
        StartNextGroup();
    else
        _groupEnd = _group.isWatched() && !isSameGroup();
    return 1;
}

void ProcedureCases::StartNextGroup()
{
    _groupEnd = false;
    _values.clear();
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < _group.columns.size(); ++i) {
        const OBS* value = GetObsPointer(_group.columns[i]);
        _values.emplace_back(value, value + unitsOfWidth(_group.variables[i].GetType()));
        texts.push_back(shown(_group.variables[i], _values.back()));
    }
    _group.begun(std::move(texts));
}

bool ProcedureCases::isSameGroup() const
{
    for (std::size_t i = 0; i < _values.size(); ++i) {
        const OBS* value = GetObsPointer(_group.columns[i]);
        // 0.0 and -0.0 are the same number.
        const bool isSameNumber =
            _group.variables[i].GetType() == 0 && value->number == _values[i].front().number;
        if (!isSameNumber &&
            std::memcmp(value, _values[i].data(), _values[i].size() * sizeof(OBS)) != 0)
            return false;
    }
    return true;
}

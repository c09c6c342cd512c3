#include "hvhost/job/RecordNames.h"

#include <string_view>
#include <utility>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/Text.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/NameLookup.h"

Derivation splitDerivation(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals != std::string::npos && text.compare(equals, 2, "==") != 0) {
        const std::string_view whole(text);
        Derivation result{std::string(trimmed(whole.substr(0, equals))),
                          std::string(trimmed(whole.substr(equals + 1)))};
        if (!result.name.empty() && !result.expression.empty())
            return result;
    }
    throw CommandFault(ExitStatus::Usage, "--derive " + text + ": no NAME=EXPRESSION",
                       "for example --derive 'spread=x.temp_max - x.temp_min'");
}

RecordNames::RecordNames(const InputFile& input, const RecordOptions& options) : _input(&input)
{
    for (const std::string& derivation : options.derivations)
        _derived.push_back(splitDerivation(derivation).name);
}

const std::vector<std::string>& RecordNames::names() const
{
    if (!_names) {
        _names = _input->names();
        if (!_names->empty())
            _names->insert(_names->end(), _derived.begin(), _derived.end());
    }
    return *_names;
}

RecordNames::RecordNames(std::vector<std::string> fields, const RecordOptions& options)
    : _input(nullptr), _names(std::move(fields))
{
    for (const std::string& derivation : options.derivations)
        _names->push_back(splitDerivation(derivation).name);
}

std::string RecordNames::own(const std::string& name, const std::string& origin) const
{
    const std::vector<std::string>& known = names();
    return known.empty() ? name : known[placeOfName(name, known, {origin})];
}

std::vector<std::string> RecordNames::own(const std::vector<std::string>& names,
                                          const std::string& option) const
{
    std::vector<std::string> result;
    result.reserve(names.size());
    for (const std::string& name : names)
        result.push_back(own(name, std::string(option).append(" ").append(name)));
    return result;
}

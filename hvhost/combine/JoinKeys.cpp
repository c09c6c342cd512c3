#include "hvhost/combine/JoinKeys.h"

#include <algorithm>

#include "hvhost/base/CommandFault.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/FieldTypes.h"

namespace {

JoinKey joinKey(const std::string& text, const CombinedInputs& inputs)
{
    const std::size_t equals = text.find('=');
    const std::string left = text.substr(0, equals);
    const std::string right = equals == std::string::npos ? text : text.substr(equals + 1);
    const std::string option = "--on " + text;
    if (left.empty() || right.empty())
        throw CommandFault(ExitStatus::Usage, option + ": a name is missing",
                           "for example --on id, or --on id=customer");
    JoinKey key{option,
                inputs.dataset(0).columnOf(left, option + ": " + inputs.name(0)),
                inputs.dataset(1).columnOf(right, option + ": " + inputs.name(1)),
                {},
                {}};
    key.left = inputs.dataset(0).nameOf(key.leftColumn);
    key.right = inputs.dataset(1).nameOf(key.rightColumn);
    return key;
}

/// The type of a field without values means nothing.
void refuseTypes(const JoinKey& key, const CombinedInputs& inputs)
{
    const CFField::StorageType left = inputs.storage(0, key.leftColumn);
    const CFField::StorageType right = inputs.storage(1, key.rightColumn);
    if (areComparable(left, right) || !inputs.hasValues(0, key.leftColumn) ||
        !inputs.hasValues(1, key.rightColumn))
        return;
    throw CommandFault(ExitStatus::Usage,
                       key.option + ": it is " + nounOf(left) + " in " + inputs.name(0) + " and " +
                           nounOf(right) + " in " + inputs.name(1),
                       "hvhost convert makes a text of it, for example with --derive "
                       "'key=toString(x.id)'");
}

void refuseRepeat(const std::vector<JoinKey>& keys, const JoinKey& key)
{
    if (std::ranges::any_of(keys, [&](const JoinKey& known) {
            return known.leftColumn == key.leftColumn || known.rightColumn == key.rightColumn;
        }))
        throw CommandFault(ExitStatus::Usage, key.option + ": the field is named twice");
}

} // namespace

std::vector<JoinKey> joinKeys(const std::vector<std::string>& texts, const CombinedInputs& inputs)
{
    std::vector<JoinKey> keys;
    for (const std::string& text : texts) {
        const JoinKey key = joinKey(text, inputs);
        refuseRepeat(keys, key);
        refuseTypes(key, inputs);
        keys.push_back(key);
    }
    return keys;
}

std::vector<std::string> leftNames(const std::vector<JoinKey>& keys)
{
    std::vector<std::string> names;
    names.reserve(keys.size());
    for (const JoinKey& key : keys)
        names.push_back(key.left);
    return names;
}

std::vector<std::string> rightNames(const std::vector<JoinKey>& keys)
{
    std::vector<std::string> names;
    names.reserve(keys.size());
    for (const JoinKey& key : keys)
        names.push_back(key.right);
    return names;
}

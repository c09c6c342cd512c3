#include "functions/FunctionTable.h"

#include <unordered_map>

namespace scoring {
namespace {

std::unordered_map<std::string_view, const FunctionEntry*> makeIndex()
{
    std::unordered_map<std::string_view, const FunctionEntry*> index;
    for (const auto family : {arithmeticFunctions(), aggregateFunctions(), logicFunctions(),
                              textFunctions(), dateFunctions()})
        for (const FunctionEntry& entry : family)
            index.emplace(entry.name, &entry);
    return index;
}

} // namespace

const FunctionEntry* findFunction(std::string_view name)
{
    static const auto index = makeIndex();
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

} // namespace scoring

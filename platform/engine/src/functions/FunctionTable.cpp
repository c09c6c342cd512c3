#include "functions/FunctionTable.h"

#include <algorithm>

namespace EmbeddedHV {

std::span<const Function> formsOf(std::string_view name)
{
    const auto* first = std::ranges::find(kFunctions, name, &Function::name);
    const auto* last = std::find_if(first, std::end(kFunctions), [name](const Function& function) {
        return function.name != name;
    });
    return {first, last};
}

bool isFunction(std::string_view name)
{
    return !formsOf(name).empty();
}

} // namespace EmbeddedHV

#include "output/KeptTexts.h"

#include <mutex>
#include <unordered_map>
#include <utility>

namespace {

struct KeptTexts
{
    std::mutex mutex;
    std::unordered_map<long, std::unique_ptr<const TnCellText>> texts;
    long next = 0;
};

KeptTexts& kept()
{
    static KeptTexts instance;
    return instance;
}

} // namespace

long keepText(std::unique_ptr<const TnCellText> text)
{
    const std::lock_guard lock(kept().mutex);
    kept().texts.emplace(kept().next, std::move(text));
    return kept().next++;
}

const TnCellText* keptText(long number)
{
    const std::lock_guard lock(kept().mutex);
    const auto found = kept().texts.find(number);
    return found != kept().texts.end() ? found->second.get() : nullptr;
}

void releaseText(long number)
{
    const std::lock_guard lock(kept().mutex);
    kept().texts.erase(number);
}

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "InputParts.h"
#include "JsonMutator.h"

/// The mutator of targets whose input, or each part of it, is JSON as a rule: it changes one part
/// as JSON seven times out of eight, and bytes else.

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t kMostParts = 8;

std::string joined(const std::vector<std::string>& parts)
{
    std::string input;
    for (const std::string& part : parts)
        input.append(&part == &parts.front() ? "" : kPartMark).append(part);
    return input;
}

/// Empty if the part that is to be changed is no JSON.
std::string withChangedPart(std::string_view input, unsigned seed)
{
    std::vector<std::string> parts = partsOf(input, kMostParts);
    std::string& part = parts[seed / 8 % parts.size()];
    part = JsonMutator(seed).mutate(part);
    return part.empty() ? std::string() : joined(parts);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed)
{
    std::string changed;
    if (seed % 8 != 0)
        changed = withChangedPart({reinterpret_cast<const char*>(data), size}, seed);
    if (changed.empty() || changed.size() > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, changed.data(), changed.size());
    return changed.size();
}

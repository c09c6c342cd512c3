#include <algorithm>
#include <array>
#include <numeric>

#include "functions/FunctionTable.h"

namespace scoring {
namespace {

using Numbers = std::span<double>;

double sum(Numbers numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

double product(Numbers numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), 1.0, std::multiplies<>());
}

double average(Numbers numbers)
{
    return sum(numbers) / static_cast<double>(numbers.size());
}

double least(Numbers numbers)
{
    return *std::min_element(numbers.begin(), numbers.end());
}

double greatest(Numbers numbers)
{
    return *std::max_element(numbers.begin(), numbers.end());
}

double median(Numbers numbers)
{
    std::sort(numbers.begin(), numbers.end());
    const std::size_t middle = numbers.size() / 2;
    return numbers.size() % 2 == 1 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

/// Aggregates the present arguments. Missing if all are missing.
template <double (*function)(Numbers)>
Cell aggregate(std::span<const Cell> arguments, Scratch& scratch)
{
    scratch.numbers.clear();
    for (const Cell& cell : arguments) {
        // Missing arguments are skipped. An invalid argument makes the result invalid.
        if (cell.isInvalid())
            return cell;
        if (cell.isPresent())
            scratch.numbers.push_back(cell.number);
    }
    return scratch.numbers.empty() ? Cell::missing() : Cell::of(function(scratch.numbers));
}

constexpr FunctionEntry entry(std::string_view name, FunctionEntry::Apply apply)
{
    return {name,
            1,
            FunctionEntry::kAnyNumber,
            ArgumentRule::Numbers,
            ResultRule::Number,
            MissingRule::Seen,
            apply,
            nullptr};
}

constexpr std::array kAggregates{
    entry("sum", aggregate<sum>),      entry("product", aggregate<product>),
    entry("avg", aggregate<average>),  entry("min", aggregate<least>),
    entry("max", aggregate<greatest>), entry("median", aggregate<median>),
};

} // namespace

std::span<const FunctionEntry> aggregateFunctions()
{
    return kAggregates;
}

} // namespace scoring

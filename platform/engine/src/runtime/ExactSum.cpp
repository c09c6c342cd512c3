#include "runtime/ExactSum.h"

#include <limits>
#include <utility>

namespace EmbeddedHV {

static_assert(std::numeric_limits<long double>::max_exponent >
                  std::numeric_limits<double>::max_exponent,
              "a sum of the largest numbers must not overflow");

ExactSum::ExactSum(double high, double low, std::int64_t count, Parts parts)
    : _high(high), _low(low), _count(count)
{
    if (!parts.empty())
        _parts = std::make_unique<Parts>(std::move(parts));
}

void ExactSum::add(const ExactSum& other)
{
    addPart(other._high);
    addPart(other._low);
    if (other._parts)
        for (const long double part : *other._parts)
            addToParts(part);
    _count += other._count;
}

void ExactSum::addToParts(long double value)
{
    if (!_parts) {
        _parts = std::make_unique<Parts>();
        insert(std::exchange(_low, 0.0));
        insert(std::exchange(_high, 0.0));
    }
    insert(value);
}

/// Adds the value to each part from the least on, and keeps what each addition rounds off.
void ExactSum::insert(long double value)
{
    std::size_t kept = 0;
    for (const long double part : *_parts) {
        const long double total = part + value;
        const long double added = total - part;
        const long double error = (part - (total - added)) + (value - added);
        if (error != 0)
            (*_parts)[kept++] = error;
        value = total;
    }
    _parts->resize(kept);
    if (value != 0)
        _parts->push_back(value);
}

long double ExactSum::rounded() const
{
    if (!_parts)
        return static_cast<long double>(_high) + _low;
    long double total = 0;
    long double error = 0;
    auto part = _parts->rbegin();
    for (; part != _parts->rend() && error == 0; ++part) {
        const long double sum = total + *part;
        error = *part - (sum - total);
        total = sum;
    }
    // If the error is half a unit of the last place, the sign of what follows decides.
    if (part != _parts->rend() && (error < 0) == (*part < 0)) {
        const long double next = total + 2 * error;
        if (next - total == 2 * error)
            total = next;
    }
    return total;
}

} // namespace EmbeddedHV

#include "maps/PlainShape.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "base/AsciiText.h"

namespace EmbeddedHV::maps {
namespace {

/// A number without an exponent and so many characters is in the range of doubles.
constexpr std::size_t kMostDigits = 300;

/// The number of digits at the start of the text, tested eight at a time: a coordinate may have
/// seventeen.
std::size_t digitRun(std::string_view text)
{
    constexpr std::uint64_t kZeros = 0x3030303030303030U;
    constexpr std::uint64_t kBeyondNine = 0x7676767676767676U; // 10 and more reach the high bit
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        word ^= kZeros;
        // A carry only changes bytes behind one that is not a digit.
        const std::uint64_t others = ((word + kBeyondNine) | word) & kHighBits;
        if (others == 0)
            continue;
        if constexpr (std::endian::native == std::endian::little)
            return at + static_cast<std::size_t>(std::countr_zero(others)) / 8;
        break;
    }
    while (at < text.size() && base::isDigit(text[at]))
        ++at;
    return at;
}

/// `keepsPoints` is false where only the form of the text matters.
template <bool keepsPoints>
class PlainScanner
{
public:
    PlainScanner(std::string_view text, Shape& shape) : _text(text), _shape(shape) {}

    bool scan()
    {
        if (!take("{\"type\":\""))
            return false;
        const Kind* const kind = kindOf(_text.substr(0, _text.find('"')));
        if (kind == nullptr)
            return false;
        _shape.kind = kind->word;
        _depth = kind->depth;
        _text.remove_prefix(kind->word.size());
        return take("\",\"coordinates\":") && list(1) && _text == "}";
    }

private:
    bool take(std::string_view expected)
    {
        if (!_text.starts_with(expected))
            return false;
        _text.remove_prefix(expected.size());
        return true;
    }

    /// A list with something in it, down to the points.
    bool list(std::size_t level)
    {
        if (!take("["))
            return false;
        if constexpr (keepsPoints)
            _shape.lists += '[';
        if (level == _depth)
            return point();
        do {
            if constexpr (keepsPoints)
                if (_shape.lists.back() == ']')
                    _shape.lists += ',';
            if (!list(level + 1))
                return false;
        } while (take(","));
        if constexpr (keepsPoints) {
            if (level + 1 == _depth)
                _shape.ends.push_back(_shape.places.size());
            _shape.lists += ']';
        }
        return take("]");
    }

    bool point()
    {
        double x = 0;
        double y = 0;
        double z = 0;
        if (!number(x) || !take(",") || !number(y))
            return false;
        const bool hasZ = take(",");
        if ((hasZ && !number(z)) || !take("]")) // measures are left to the parser
            return false;
        if constexpr (!keepsPoints)
            return true;
        _shape.places.push_back(_shape.lists.size());
        _shape.x.push_back(x);
        _shape.y.push_back(y);
        _shape.z.push_back(z);
        _shape.hasZ.push_back(hasZ ? 1 : 0);
        _shape.lists += ']';
        return true;
    }

    std::size_t digits(std::size_t at) const { return at + digitRun(_text.substr(at)); }

    /// The length of the number at the start, without an exponent; 0 if it is not one of JSON.
    std::size_t numberLength() const
    {
        const std::size_t begin = _text.starts_with('-') ? 1 : 0;
        std::size_t end = digits(begin);
        if (end == begin || (_text[begin] == '0' && end > begin + 1))
            return 0;
        if (end < _text.size() && _text[end] == '.') {
            const std::size_t fraction = digits(end + 1);
            if (fraction == end + 1)
                return 0;
            end = fraction;
        }
        return end;
    }

    bool number(double& value)
    {
        // The next character decides whether it ends here: an exponent is left to the parser.
        const std::size_t length = numberLength();
        if (length == 0 || length > kMostDigits)
            return false;
        if constexpr (keepsPoints)
            std::from_chars(_text.data(), _text.data() + length, value);
        _text.remove_prefix(length);
        return true;
    }

    std::string_view _text;
    Shape& _shape;
    std::size_t _depth = 0;
};

} // namespace

bool scanPlainShape(std::string_view text, Shape& shape)
{
    return PlainScanner<true>(text, shape).scan();
}

bool isPlainShape(std::string_view text)
{
    Shape unused;
    return PlainScanner<false>(text, unused).scan();
}

} // namespace EmbeddedHV::maps

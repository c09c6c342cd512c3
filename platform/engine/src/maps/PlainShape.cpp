#include "maps/PlainShape.h"

#include <charconv>

#include "base/AsciiText.h"

namespace EmbeddedHV::maps {
namespace {

/// A number without an exponent and so many characters is in the range of doubles.
constexpr std::size_t kMostDigits = 300;

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

    std::size_t digits(std::size_t at) const
    {
        while (at < _text.size() && base::isDigit(_text[at]))
            ++at;
        return at;
    }

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

#include "components/temporal/model/NumberLists.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace EmbeddedHV {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Whether a number that from_chars has read is one in JSON, which has no infinity, no leading
/// zeros and no point without digits around it.
bool isJsonNumber(std::string_view number)
{
    if (number.starts_with('-'))
        number.remove_prefix(1);
    const std::size_t point = number.find('.');
    const bool hasZero = number.size() > 1 && number[0] == '0' && isDigit(number[1]);
    return !number.empty() && isDigit(number[0]) && !hasZero &&
           (point == std::string_view::npos ||
            (point + 1 < number.size() && isDigit(number[point + 1])));
}

/// Reads a document from its begin to its end.
class ListScan
{
public:
    ListScan(std::string_view text, std::string_view key) : _text(text), _key(key) {}

    /// Nothing if a member with the key is no list of numbers.
    std::optional<DocumentWithoutLists> run()
    {
        DocumentWithoutLists result;
        std::size_t copied = 0;
        while (nextMember()) {
            result.text.append(_text.substr(copied, _at - copied));
            std::vector<double> list;
            if (!readList(list))
                return std::nullopt;
            copied = _at;
            result.text += std::to_string(result.lists.size());
            result.values += list.size();
            result.lists.push_back(std::move(list));
        }
        result.text.append(_text.substr(copied));
        return result;
    }

private:
    char current() const { return _at < _text.size() ? _text[_at] : '\0'; }
    void skipBlanks() { _at = std::min(_text.find_first_not_of(kBlanks, _at), _text.size()); }

    /// Goes to the value of the next member with the key.
    bool nextMember()
    {
        while ((_at = _text.find('"', _at)) != std::string_view::npos) {
            const std::size_t begin = ++_at;
            while (_at < _text.size() && _text[_at] != '"')
                _at += _text[_at] == '\\' ? 2 : 1;
            if (_at >= _text.size())
                return false;
            const bool isKey = _text.substr(begin, _at - begin) == _key;
            ++_at;
            if (!isKey)
                continue;
            skipBlanks();
            if (current() != ':')
                continue;
            ++_at;
            skipBlanks();
            return true;
        }
        return false;
    }

    bool readList(std::vector<double>& list)
    {
        if (current() != '[')
            return false;
        ++_at;
        skipBlanks();
        for (bool isFirst = true; current() != ']'; isFirst = false) {
            if (!isFirst) {
                if (current() != ',')
                    return false;
                ++_at;
                skipBlanks();
            }
            if (!readElement(list))
                return false;
            skipBlanks();
        }
        ++_at;
        return true;
    }

    bool readElement(std::vector<double>& list)
    {
        if (_text.substr(_at, 4) == "null") {
            list.push_back(std::numeric_limits<double>::quiet_NaN());
            _at += 4;
            return true;
        }
        double value = 0;
        const char* const begin = _text.data() + _at;
        const auto [end, error] = std::from_chars(begin, _text.data() + _text.size(), value);
        const std::string_view number(begin, static_cast<std::size_t>(end - begin));
        if (error != std::errc() || !isJsonNumber(number))
            return false;
        list.push_back(value);
        _at += number.size();
        return true;
    }

    std::string_view _text;
    std::string_view _key;
    std::size_t _at = 0;
};

} // namespace

DocumentWithoutLists withoutLists(const std::string& document, const std::string& key)
{
    // An escape may hide a key.
    if (document.find("\\u") == std::string::npos)
        if (auto result = ListScan(document, key).run())
            return std::move(*result);
    return {document, {}, 0};
}

} // namespace EmbeddedHV

#include "hvhost/input/HeadRecords.h"

#include <algorithm>
#include <utility>

namespace {

bool isLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

/// Splits a text from its start to its end.
class HeadSplitter
{
public:
    HeadSplitter(std::string_view text, const TextDialect& dialect) : _text(text), _dialect(dialect)
    {
    }

    /// Returns false at the end of the text.
    bool next(HeadRecords::Record& record)
    {
        skipLines();
        record.clear();
        if (_at == _text.size())
            return false;
        record.push_back(field());
        while (_at < _text.size() && !isLineEnd(_text[_at])) {
            ++_at; // past the separator
            record.push_back(field());
        }
        return true;
    }

    /// Whether the last record ends with the text and not with a line end.
    bool isAtEnd() const { return _at == _text.size(); }
    bool isSound() const { return _isSound; }

private:
    /// Moves past blank lines and comments.
    void skipLines()
    {
        while (_at < _text.size()) {
            if (isLineEnd(_text[_at]))
                ++_at;
            else if (_dialect.comment != '\0' && _text[_at] == _dialect.comment)
                _at = std::min(_text.find_first_of("\r\n", _at), _text.size());
            else
                return;
        }
    }

    std::size_t fieldEnd(std::size_t from) const
    {
        while (from < _text.size() && _text[from] != _dialect.separator && !isLineEnd(_text[from]))
            ++from;
        return from;
    }

    datafile::CsvField field()
    {
        const std::size_t blank = _at < _text.size() && _text[_at] == ' ' ? 1 : 0;
        if (_at + blank < _text.size() && _text[_at + blank] == _dialect.quote)
            return quotedField(_at + blank + 1);
        const std::size_t begin = std::exchange(_at, fieldEnd(_at));
        return {_text.substr(begin, _at - begin), false};
    }

    datafile::CsvField quotedField(std::size_t begin)
    {
        const std::size_t end = closingQuote(begin);
        _at = fieldEnd(std::min(end + 1, _text.size()));
        const std::string_view rest = _text.substr(std::min(end + 1, _text.size()));
        const bool isClosed = end < _text.size();
        const std::size_t after = rest.find_first_not_of(' ');
        _isSound = _isSound && isClosed &&
                   (after == std::string_view::npos || isLineEnd(rest[after]) ||
                    rest[after] == _dialect.separator);
        return {_text.substr(begin, end - begin), true};
    }

    /// The closing quote, or the end of the text.
    std::size_t closingQuote(std::size_t at) const
    {
        const bool isDoubled = _dialect.escape == _dialect.quote;
        for (; at < _text.size(); ++at) {
            if (!isDoubled && _text[at] == _dialect.escape)
                ++at;
            else if (_text[at] == _dialect.quote) {
                if (!isDoubled || at + 1 == _text.size() || _text[at + 1] != _dialect.quote)
                    return at;
                ++at;
            }
        }
        return _text.size();
    }

    std::string_view _text;
    const TextDialect& _dialect;
    std::size_t _at = 0;
    bool _isSound = true;
};

} // namespace

bool HeadRecords::isRegular() const
{
    return isSound && !records.empty() && records.front().size() > 1 &&
           std::all_of(records.begin(), records.end(), [this](const Record& record) {
               return record.size() == records.front().size();
           });
}

bool HeadRecords::quotesValues() const
{
    for (std::size_t i = 1; i < records.size(); ++i)
        for (const datafile::CsvField& field : records[i])
            if (field.quoted)
                return true;
    return false;
}

HeadRecords headRecords(std::string_view text, const TextDialect& dialect, std::size_t most,
                        bool isWhole)
{
    HeadRecords head;
    HeadSplitter splitter(text, dialect);
    HeadRecords::Record record;
    while (head.records.size() < most) {
        const bool wasSound = splitter.isSound();
        if (!splitter.next(record))
            break;
        if (!isWhole && splitter.isAtEnd() && !head.records.empty()) {
            head.isSound = wasSound;
            return head;
        }
        head.records.push_back(record);
    }
    head.isSound = splitter.isSound();
    return head;
}

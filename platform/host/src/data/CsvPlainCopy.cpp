#include "data/CsvPlainCopy.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "FileServices.h"
#include "base/FileDescriptor.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "text/CodePage.h"

namespace {

constexpr std::size_t kCopyBlock = std::size_t{256} * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kDigitsOfGroup = 3;

std::size_t countDigits(std::string_view text)
{
    const std::size_t end = text.find_first_not_of("0123456789");
    return end == std::string_view::npos ? text.size() : end;
}

/// Removes the integer part of a number from the start of the text and returns its digits. In 1.234
/// the period groups digits; in 0.234 it cannot.
std::string takeWholePart(std::string_view& text)
{
    const std::size_t first = countDigits(text);
    std::string digits(text.substr(0, first));
    text.remove_prefix(first);
    if (first == 0 || first > kDigitsOfGroup || digits.front() == '0')
        return digits;
    while (text.starts_with('.') && countDigits(text.substr(1)) == kDigitsOfGroup) {
        digits += text.substr(1, kDigitsOfGroup);
        text.remove_prefix(1 + kDigitsOfGroup);
    }
    return digits;
}

bool isFraction(std::string_view text)
{
    const std::size_t digits = countDigits(text);
    std::string_view rest = text.substr(digits);
    if (digits == 0 || rest.empty())
        return digits > 0;
    if (rest.front() != 'e' && rest.front() != 'E')
        return false;
    rest.remove_prefix(1);
    if (rest.starts_with('-') || rest.starts_with('+'))
        rest.remove_prefix(1);
    return !rest.empty() && countDigits(rest) == rest.size();
}

/// Converts a number such as -1.234,5 to -1234.5; nullopt if the text is not such a number or needs
/// no change.
std::optional<std::string> withPeriod(std::string_view text)
{
    const std::size_t whole = text.size();
    std::string number;
    if (text.starts_with('-') || text.starts_with('+')) {
        number = text.front();
        text.remove_prefix(1);
    }
    number += takeWholePart(text);
    if (text.empty())
        return number.size() == whole ? std::nullopt : std::optional(number);
    // A second comma, for example in a list of numbers, makes it a text.
    if (text.front() != ',' || !isFraction(text.substr(1)))
        return std::nullopt;
    return number + "." + std::string(text.substr(1));
}

/// Rewrites a text that arrives in pieces.
class PlainText
{
public:
    explicit PlainText(const CsvForm& form) : _form(form) {}

    void take(std::string_view piece)
    {
        for (const char character : piece)
            take(character);
    }
    void end() { endField(); }
    /// The output so far; the caller takes it.
    std::string& done() { return _done; }

private:
    void take(char character);
    void endField();

    const CsvForm& _form;
    std::string _field;   ///< unchanged, with quotes
    bool _quoted = false; ///< inside quotes, where a separator is an ordinary character
    std::string _done;
};

void PlainText::take(char character)
{
    const bool isSeparator = character == _form.separator;
    if (!_quoted && (isSeparator || character == '\n' || character == '\r')) {
        endField();
        _done += isSeparator ? ',' : character;
        return;
    }
    // One blank may precede an opening quote.
    if (character == '"' && _field == " ")
        _field.clear();
    // A doubled quote closes and opens. In an unquoted field a quote is an ordinary character.
    if (character == '"' && (_field.empty() || _field.front() == '"'))
        _quoted = !_quoted;
    _field += character;
}

void PlainText::endField()
{
    if (_field.starts_with('"'))
        _field.erase(_field.find_last_not_of(' ') + 1); // after a closing quote
    const bool hasQuotes = _field.size() > 1 && _field.front() == '"' && _field.back() == '"';
    const std::string_view text =
        std::string_view(_field).substr(hasQuotes ? 1 : 0, _field.size() - (hasQuotes ? 2 : 0));
    const auto number = _form.decimalComma ? withPeriod(text) : std::nullopt;
    if (number) {
        _done += *number;
    } else if (_field.starts_with('"') || _field.find(',') == std::string::npos) {
        _done += _field;
    } else {
        _done += '"';
        for (const char character : _field)
            _done.append(character == '"' ? 2 : 1, character);
        _done += '"';
    }
    _field.clear();
    _quoted = false;
}

} // namespace

std::shared_ptr<datafile::ScratchFile> plainCopy(const std::string& path, const std::string& name,
                                                 const UserCaseFileSpec& spec)
{
    const base::FileDescriptor source(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        failToRead(name);
    auto target =
        std::make_shared<datafile::ScratchFile>(base::nativePath(hostToUtf8(GetVexaTempPath())));
    PlainText text(spec.GetCsvForm());
    const auto flush = [&] {
        if (!target->write(text.done()))
            failToCopy(name, "with commas");
        text.done().clear();
    };
    std::string block(kCopyBlock, '\0');
    bool isFirst = true;
    ssize_t got = 0;
    while ((got = source.readUpTo(block.data(), block.size())) > 0) {
        spec.Look();
        std::string_view piece(block.data(), static_cast<std::size_t>(got));
        if (std::exchange(isFirst, false) && piece.starts_with(kByteOrderMark))
            piece.remove_prefix(kByteOrderMark.size());
        text.take(piece);
        flush();
    }
    if (got < 0)
        failToRead(name);
    text.end();
    flush();
    target->rewind();
    return target;
}

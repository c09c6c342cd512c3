#include "report/text/TerminalText.h"

#include <algorithm>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace {

constexpr UChar32 kEmojiStyle = 0xFE0F;
constexpr const char* kReplacement = "\xEF\xBF\xBD";
constexpr const char* kEllipsis = "…";
constexpr const char* kIsolate = "\xE2\x81\xA8"; ///< the text determines its direction
constexpr const char* kEndOfIsolate = "\xE2\x81\xA9";

bool isPlainAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return byte >= ' ' && byte <= '~'; });
}

/// Reads the character at `offset` and moves behind it.
UChar32 nextCharacter(std::string_view text, std::size_t& offset)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto place = static_cast<std::int64_t>(offset);
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(bytes, place, static_cast<std::int64_t>(text.size()), character);
    offset = static_cast<std::size_t>(place);
    return character;
}

bool turnsDirection(UChar32 character)
{
    return (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

bool isHarmless(UChar32 character)
{
    switch (u_charType(character)) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
        return false;
    default:
        return !turnsDirection(character);
    }
}

std::size_t widthOf(UChar32 character)
{
    switch (u_charType(character)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
        return 0;
    default:
        break;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// The width of a visible character: a letter with its accents, a flag, a family.
std::size_t widthOfCluster(std::string_view cluster)
{
    std::size_t width = 0;
    std::size_t offset = 0;
    while (offset < cluster.size()) {
        const UChar32 character = nextCharacter(cluster, offset);
        // Terminals draw flags and pictures with two columns, whatever their parts are.
        const bool isPicture = character == kEmojiStyle ||
                               u_hasBinaryProperty(character, UCHAR_REGIONAL_INDICATOR) != 0;
        width = std::max(width, isPicture ? 2 : widthOf(character));
    }
    return width;
}

/// Boundaries in a text, found by one of ICU's iterators.
class Breaks
{
public:
    using Maker = icu::BreakIterator*(const icu::Locale&, UErrorCode&);

    explicit Breaks(Maker* maker)
    {
        UErrorCode status = U_ZERO_ERROR;
        _iterator.reset(maker(icu::Locale::getRoot(), status));
    }
    /// Visits the parts of a text until `visit` returns false.
    template <typename Visit>
    void forEach(std::string_view text, Visit visit)
    {
        UErrorCode status = U_ZERO_ERROR;
        UText* const opened =
            utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
        const std::unique_ptr<UText, decltype(&utext_close)> owned(opened, &utext_close);
        if (!_iterator || U_FAILURE(status)) {
            visit(text);
            return;
        }
        _iterator->setText(opened, status);
        auto begin = static_cast<std::size_t>(_iterator->first());
        for (int end = _iterator->next(); end != icu::BreakIterator::DONE;
             end = _iterator->next()) {
            if (!visit(text.substr(begin, static_cast<std::size_t>(end) - begin)))
                return;
            begin = static_cast<std::size_t>(end);
        }
    }

private:
    std::unique_ptr<icu::BreakIterator> _iterator;
};

// Slow to create, and used for one text at a time.
Breaks& clusters()
{
    thread_local Breaks breaks(&icu::BreakIterator::createCharacterInstance);
    return breaks;
}

Breaks& lineParts()
{
    thread_local Breaks breaks(&icu::BreakIterator::createLineInstance);
    return breaks;
}

/// The number of bytes at the start of a text that fit into `width` columns.
std::size_t bytesOf(std::string_view text, std::size_t width)
{
    std::size_t bytes = 0;
    std::size_t used = 0;
    clusters().forEach(text, [&](std::string_view cluster) {
        used += widthOfCluster(cluster);
        bytes += used <= width ? cluster.size() : 0;
        return used <= width;
    });
    return bytes;
}

void removeBlanksAtEnd(std::string& text)
{
    text.erase(text.find_last_not_of(' ') + 1);
}

/// Arranges the words of a text in lines.
class Wrapping
{
public:
    explicit Wrapping(std::size_t width) : _width(std::max<std::size_t>(width, 2)) {}

    void addLine(std::string_view text)
    {
        _lines.emplace_back();
        // Line breaks need the iterator of lines; cutting words needs that of characters.
        lineParts().forEach(text, [this](std::string_view part) {
            addPart(std::string(part));
            return true;
        });
        removeBlanksAtEnd(_lines.back());
    }
    std::vector<std::string> lines() && { return std::move(_lines); }

private:
    void addPart(std::string part)
    {
        std::string bare = part;
        removeBlanksAtEnd(bare);
        if (!_lines.back().empty() && terminalWidth(_lines.back() + bare) > _width)
            begin();
        for (std::size_t bytes = 0; (bytes = bytesOf(bare, _width)) < bare.size();) {
            _lines.back() = bare.substr(0, bytes);
            bare.erase(0, bytes);
            part.erase(0, bytes);
            begin();
        }
        _lines.back() += part;
    }
    void begin()
    {
        removeBlanksAtEnd(_lines.back());
        _lines.emplace_back();
    }

    std::size_t _width;
    std::vector<std::string> _lines;
};

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.push_back(text.substr(0, end));
        if (lines.back().ends_with('\r'))
            lines.back().remove_suffix(1);
        text.remove_prefix(end + 1);
    }
    lines.push_back(text);
    return lines;
}

} // namespace

std::string terminalText(std::string_view text)
{
    if (isPlainAscii(text))
        return std::string(text);
    std::string cleaned;
    cleaned.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const std::size_t begin = offset;
        const UChar32 character = nextCharacter(text, offset);
        if (character == '\t')
            cleaned += ' ';
        // Data must not move the cursor, change colours or change the direction of other text.
        else if (character == 0xFFFD || !isHarmless(character))
            cleaned += kReplacement;
        else
            cleaned += text.substr(begin, offset - begin);
    }
    return cleaned;
}

std::vector<std::string> terminalLines(std::string_view text)
{
    std::vector<std::string> lines;
    for (const std::string_view line : linesOf(text))
        lines.push_back(terminalText(line));
    return lines;
}

std::size_t terminalWidth(std::string_view text)
{
    if (isPlainAscii(text))
        return text.size();
    std::size_t width = 0;
    clusters().forEach(text, [&](std::string_view cluster) {
        width += widthOfCluster(cluster);
        return true;
    });
    return width;
}

std::string terminalCut(const std::string& text, std::size_t width)
{
    if (terminalWidth(text) <= width)
        return text;
    return width == 0 ? std::string() : text.substr(0, bytesOf(text, width - 1)) + kEllipsis;
}

std::string terminalIsolated(const std::string& text)
{
    if (isPlainAscii(text))
        return text;
    for (std::size_t offset = 0; offset < text.size();) {
        const UCharDirection direction = u_charDirection(nextCharacter(text, offset));
        if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC ||
            direction == U_ARABIC_NUMBER)
            return kIsolate + text + kEndOfIsolate;
    }
    return text;
}

std::vector<std::string> terminalWrapped(std::string_view text, std::size_t width)
{
    Wrapping wrapping(width);
    for (const std::string& line : terminalLines(text))
        wrapping.addLine(line);
    return std::move(wrapping).lines();
}

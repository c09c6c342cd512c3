#include "hvhost/base/TerminalFilter.h"

#include <algorithm>

#include "hvhost/base/Text.h"
#include "report/text/TerminalText.h"

namespace {

/// The styles of headings, footnotes and messages. Data may contain them too, because they only
/// change the appearance of text.
constexpr std::array<std::string_view, 5> kStyles{"\x1b[0m", "\x1b[1m", "\x1b[2m", "\x1b[33m",
                                                  "\x1b[31m"};
constexpr std::size_t kLongestStyle = 5;
constexpr std::size_t kLongestCharacter = 4;

/// The number of bytes at the end that may be the beginning of a character or of a style.
std::size_t unfinishedBytes(std::string_view bytes)
{
    const std::size_t escape = bytes.rfind('\x1b');
    if (escape != std::string_view::npos && bytes.size() - escape < kLongestStyle &&
        std::any_of(kStyles.begin(), kStyles.end(), [&](std::string_view style) {
            return style.size() > bytes.size() - escape && style.starts_with(bytes.substr(escape));
        }))
        return bytes.size() - escape;
    std::size_t count = 0;
    while (count < std::min(bytes.size(), kLongestCharacter) &&
           !beginsCharacter(bytes[bytes.size() - 1 - count]))
        ++count;
    if (count == bytes.size() || count == kLongestCharacter)
        return 0;
    const auto first = static_cast<unsigned char>(bytes[bytes.size() - 1 - count]);
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
    return length > count + 1 ? count + 1 : 0;
}

/// The number of bytes at the start that pass unchanged.
std::size_t allowedBytes(std::string_view bytes)
{
    if (bytes[0] == '\n' || bytes[0] == '\t')
        return 1;
    const auto* const style = std::find_if(kStyles.begin(), kStyles.end(),
                                           [&](auto known) { return bytes.starts_with(known); });
    return style == kStyles.end() ? 0 : style->size();
}

std::string cleaned(std::string_view bytes)
{
    std::string result;
    while (!bytes.empty()) {
        const std::size_t allowed = allowedBytes(bytes);
        const std::size_t end =
            allowed > 0 ? allowed : std::min(bytes.find_first_of("\n\t\x1b", 1), bytes.size());
        const std::string_view part = bytes.substr(0, end);
        result += allowed > 0 ? std::string(part) : terminalText(part);
        bytes.remove_prefix(end);
    }
    return result;
}

} // namespace

std::string TerminalFilter::clean(std::string_view bytes)
{
    _waiting += bytes;
    const std::size_t end = _waiting.size() - unfinishedBytes(_waiting);
    std::string shown = cleaned(std::string_view(_waiting).substr(0, end));
    _waiting.erase(0, end);
    return shown;
}

std::string TerminalFilter::finish()
{
    std::string shown = cleaned(_waiting);
    _waiting.clear();
    return shown;
}

CleanedStream::CleanedStream(std::ostream& stream) : _stream(stream), _target(stream.rdbuf(this))
{
    setp(_chunk.data(), _chunk.data() + _chunk.size());
}

CleanedStream::~CleanedStream()
{
    pass();
    const std::string rest = _filter.finish();
    _target->sputn(rest.data(), static_cast<std::streamsize>(rest.size()));
    _stream.rdbuf(_target);
}

CleanedStream::int_type CleanedStream::overflow(int_type character)
{
    if (!pass())
        return traits_type::eof();
    if (character != traits_type::eof())
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

int CleanedStream::sync()
{
    return pass() && _target->pubsync() == 0 ? 0 : -1;
}

/// Cleans the collected bytes and passes them on.
bool CleanedStream::pass()
{
    const std::string shown = _filter.clean({pbase(), static_cast<std::size_t>(pptr() - pbase())});
    setp(_chunk.data(), _chunk.data() + _chunk.size());
    const auto size = static_cast<std::streamsize>(shown.size());
    return _target->sputn(shown.data(), size) == size;
}

#include "report/text/TextPage.h"

#include <ostream>

#include "report/text/TerminalText.h"

namespace {

/// The terminal's style sequence, with colours that every terminal has.
const char* codeOf(TextPage::Style style)
{
    switch (style) {
    case TextPage::Style::Bold:
        return "\x1b[1m";
    case TextPage::Style::Faint:
        return "\x1b[2m";
    case TextPage::Style::Warning:
        return "\x1b[33m";
    case TextPage::Style::Error:
        return "\x1b[31m";
    case TextPage::Style::Plain:
        break;
    }
    return "";
}

} // namespace

void TextPage::beginBlock()
{
    if (!_isEmpty)
        _out << '\n';
    _isEmpty = false;
}

std::string TextPage::styled(const std::string& line, Style style) const
{
    if (!_options.colours || style == Style::Plain)
        return line;
    return codeOf(style) + line + "\x1b[0m";
}

void TextPage::write(const std::string& text, Style style, const std::string& lead)
{
    std::string before = terminalText(lead);
    const std::size_t indent = terminalWidth(before);
    const std::size_t room = _options.width > indent ? _options.width - indent : 1;
    for (const std::string& line : terminalWrapped(text, room)) {
        _out << styled(before + terminalIsolated(line), style) << '\n';
        before.assign(indent, ' ');
    }
}

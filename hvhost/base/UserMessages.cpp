#include "hvhost/base/UserMessages.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "JobText.h"
#include "hvhost/base/StandardStreams.h"
#include "report/text/TerminalText.h"

namespace {

/// Addresses as given, and as shown.
std::vector<std::pair<std::string, std::string>>& addresses()
{
    static std::vector<std::pair<std::string, std::string>> list;
    return list;
}

bool isInScheme(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '+' || letter == '-' || letter == '.';
}

/// The address around the "://" at this position. It may follow an option or be part of an
/// expression.
std::string_view addressAt(std::string_view word, std::size_t separator)
{
    std::size_t begin = separator;
    while (begin > 0 && isInScheme(word[begin - 1]))
        --begin;
    const std::size_t end = std::min(word.find_first_of(" \t\n\"'<>`", separator), word.size());
    return word.substr(begin, end - begin);
}

void replaceAll(std::string& text, const std::string& old, const std::string& replacement)
{
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + replacement.size()))
        text.replace(at, old.size(), replacement);
}

} // namespace

void rememberAddresses(int count, char** words)
{
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        std::size_t at = word.find("://");
        while (at != std::string_view::npos) {
            const std::string address(addressAt(word, at));
            std::string shown = EmbeddedHV::shownAddress(address);
            if (shown != address)
                addresses().emplace_back(address, std::move(shown));
            at = word.find("://", at + 1);
        }
    }
}

std::string shownMessage(const std::string& text)
{
    std::string open = text;
    for (const auto& [given, shown] : addresses())
        replaceAll(open, given, shown);
    std::string message;
    for (const std::string& line : terminalLines(open))
        message += (message.empty() ? "" : "\n  ") + line;
    return message;
}

void printMessage(const std::string& text)
{
    printToStandardError(shownMessage(text) + '\n');
}

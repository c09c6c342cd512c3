#include "hvhost/tcm/SeriesText.h"

#include "hvhost/base/CommandFault.h"

std::string seriesText(const SeriesName& name)
{
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        text += i == 0 ? "" : ",";
        if (name[i].find_first_of(",\"") == std::string::npos) {
            text += name[i];
            continue;
        }
        text += '"';
        for (const char character : name[i])
            text += character == '"' ? "\"\"" : std::string(1, character);
        text += '"';
    }
    return text;
}

SeriesName parseSeries(const std::string& text, const std::string& option)
{
    if (text.empty())
        throw CommandFault(ExitStatus::Usage, option + ": a series is missing");
    SeriesName name(1);
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (character == '"' && isQuoted && text.compare(at + 1, 1, "\"") == 0)
            name.back() += text[++at];
        else if (character == '"' && (isQuoted || name.back().empty()))
            isQuoted = !isQuoted;
        else if (character == ',' && !isQuoted)
            name.emplace_back();
        else
            name.back() += character;
    }
    if (isQuoted)
        throw CommandFault(ExitStatus::Usage, option + ": the quote has no end");
    return name;
}

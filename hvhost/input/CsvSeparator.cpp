#include "hvhost/input/CsvSeparator.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string_view>
#include <vector>

#include "base/AsciiText.h"

namespace {

constexpr std::string_view kTab = "tab";
constexpr std::string_view kCandidates = ",;\t|";
constexpr std::size_t kMostLooked = std::size_t{64} * 1024;
constexpr std::size_t kMostLines = 100;

/// The first lines with text, up to a limit, without what is in quotes. A line that the limit cuts
/// is left out, unless it is the only one.
std::vector<std::string> firstLines(const std::string& path, std::uint64_t skipped, char comment)
{
    std::ifstream file(path, std::ios::binary);
    std::string begin(kMostLooked, '\0');
    file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    const bool isWhole = file.eof();
    begin.resize(static_cast<std::size_t>(file.gcount()));
    std::vector<std::string> lines;
    std::string line;
    bool quoted = false;
    std::uint64_t number = 0;
    const auto end = [&] {
        const bool counts =
            number++ >= skipped && !line.empty() && (comment == '\0' || line.front() != comment);
        if (counts)
            lines.push_back(line);
        line.clear();
    };
    for (const char character : begin) {
        if (character == '\n' && !quoted)
            end();
        else if (character == '"')
            quoted = !quoted;
        else if (!quoted && character != '\r')
            line += character;
        if (lines.size() == kMostLines)
            return lines;
    }
    if (isWhole || lines.empty())
        end();
    return lines;
}

std::ptrdiff_t countIn(const std::string& line, char character)
{
    return std::count(line.begin(), line.end(), character);
}

bool isInEachLine(const std::vector<std::string>& lines, char character)
{
    const std::ptrdiff_t count = countIn(lines.front(), character);
    return count > 0 && std::all_of(lines.begin(), lines.end(), [&](const std::string& line) {
               return countIn(line, character) == count;
           });
}

/// Whether each comma after the first line is between two digits.
bool areDecimalCommas(const std::vector<std::string>& lines)
{
    bool isAny = false;
    for (std::size_t i = 1; i < lines.size(); ++i)
        for (std::size_t at = lines[i].find(','); at != std::string::npos;
             at = lines[i].find(',', at + 1)) {
            isAny = true;
            if (at == 0 || at + 1 == lines[i].size() || !base::isDigit(lines[i][at - 1]) ||
                !base::isDigit(lines[i][at + 1]))
                return false;
        }
    return isAny;
}

/// The candidate that is most often in a line; the first one if several are.
char mostFrequent(const std::string& line, std::string_view candidates)
{
    return *std::max_element(candidates.begin(), candidates.end(), [&](char left, char right) {
        return countIn(line, left) < countIn(line, right);
    });
}

} // namespace

char separatorOf(const std::string& word)
{
    if (word == kTab)
        return '\t';
    const bool isOne =
        word.size() == 1 && (std::ispunct(static_cast<unsigned char>(word[0])) != 0 ||
                             word[0] == '\t' || word[0] == ' ');
    return isOne && word != "\"" ? word.front() : '\0';
}

std::string separatorWord(char separator)
{
    return separator == '\t' ? std::string(kTab) : std::string(1, separator);
}

char likelySeparator(const std::string& path, std::uint64_t skipped, char comment)
{
    const std::vector<std::string> lines = firstLines(path, skipped, comment);
    if (lines.empty())
        return ',';
    std::string regular;
    for (const char candidate : kCandidates)
        if (isInEachLine(lines, candidate))
            regular += candidate;
    if (regular.size() > 1 && regular.front() == ',' && areDecimalCommas(lines))
        regular.erase(0, 1);
    if (!regular.empty())
        return mostFrequent(lines.front(), regular);
    // Some line is wrong or a text. The first line decides.
    if (countIn(lines.front(), ',') > 0)
        return ',';
    const char most = mostFrequent(lines.front(), kCandidates);
    return countIn(lines.front(), most) > 0 ? most : ',';
}

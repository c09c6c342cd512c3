#include "hvhost/input/OptionChecks.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "base/AsciiText.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/input/CsvSeparator.h"
#include "hvhost/input/DataKind.h"

namespace {

/// Whether the whole text is a number.
template <typename Number>
bool isNumber(const std::string& text, Number& number)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end;
}

/// Accepts one of the first words for kinds.
CLI::Validator kindWord(std::size_t count)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < count; ++i)
        words.emplace_back(kDataKinds.at(i).word);
    return CLI::IsMember(words, CLI::ignore_case);
}

} // namespace

CLI::Validator notEmpty()
{
    return {[](const std::string& text) { return text.empty() ? "nothing is given" : ""; }, ""};
}

CLI::Validator noStream()
{
    return {[](const std::string& text) {
                return text == kStandardStream ? "a file is needed, not a stream" : "";
            },
            ""};
}

CLI::Validator wholeNumberFrom(long long minimum)
{
    return {[minimum](const std::string& text) -> std::string {
                long long number = 0;
                if (isNumber(text, number) && number >= minimum)
                    return {};
                return text + " is not a whole number from " + std::to_string(minimum) + " up";
            },
            ""};
}

CLI::Validator positiveNumber()
{
    return {[](const std::string& text) -> std::string {
                double number = 0;
                if (isNumber(text, number) && std::isfinite(number) && number > 0)
                    return {};
                return text + " is not a number above 0";
            },
            ""};
}

CLI::Validator sampleSize()
{
    return {[](const std::string& text) -> std::string {
                long long count = 0;
                double percent = -1;
                if (text.ends_with('%') ? isNumber(text.substr(0, text.size() - 1), percent) &&
                                              percent >= 0 && percent <= 100
                                        : isNumber(text, count) && count >= 0)
                    return {};
                return text + " is neither a whole number from 0 up nor a percentage such as 10%";
            },
            ""};
}

CLI::Validator percentNumber()
{
    return {[](const std::string& text) -> std::string {
                double number = 0;
                if (isNumber(text, number) && number >= 0 && number <= 100)
                    return {};
                return text + " is not a number from 0 to 100";
            },
            ""};
}

CLI::Validator separatorWordCheck()
{
    return {[](const std::string& text) -> std::string {
                if (separatorOf(text) != '\0')
                    return {};
                return text + " is neither a character that separates fields nor the word tab";
            },
            ""};
}

CLI::Validator oneCharacter()
{
    return {[](const std::string& text) -> std::string {
                if (text.size() == 1 && base::isAscii(text.front()))
                    return {};
                return text + " is not one character";
            },
            ""};
}

CLI::Validator inputKindWord()
{
    return kindWord(kInputKinds);
}

CLI::Validator outputKindWord()
{
    return kindWord(kOutputKinds);
}

#include "data/TextBytes.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

namespace {

/// Bytes at the start of a file that name its form.
struct Mark
{
    std::string_view bytes;
    const char* option;
};
constexpr std::array<Mark, 2> kMarks{
    {{"\xff\xfe", ", encoding = 'utf-16'"}, {"\xfe\xff", ", encoding = 'utf-16'"}}};

constexpr std::string_view kSeparators = ",;\t|";

constexpr std::size_t kTextBlock = std::size_t{1} << 20;

/// Reads the next bytes of the file, at most as many as the block has.
std::string_view nextBytes(std::ifstream& file, std::string& block)
{
    file.read(block.data(), static_cast<std::streamsize>(block.size()));
    return {block.data(), static_cast<std::size_t>(file.gcount())};
}

} // namespace

const char* optionOfMark(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string block(2, '\0');
    const std::string_view begin = nextBytes(file, block);
    const auto* const mark = std::find_if(kMarks.begin(), kMarks.end(), [begin](const Mark& known) {
        return begin.starts_with(known.bytes);
    });
    return mark == kMarks.end() ? "" : mark->option;
}

std::size_t separatorsInLine(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string block(kTextBlock, '\0');
    std::size_t most = 0;
    std::size_t count = 0;
    for (const char byte : nextBytes(file, block)) {
        count = byte == '\n' ? 0 : count + (kSeparators.find(byte) != std::string_view::npos);
        most = std::max(most, count);
    }
    return most;
}

bool hasQuote(const std::string& path, char quote)
{
    if (quote == '\0')
        return false;
    std::ifstream file(path, std::ios::binary);
    std::string block(kTextBlock, '\0');
    while (file)
        if (nextBytes(file, block).find(quote) != std::string_view::npos)
            return true;
    return false;
}

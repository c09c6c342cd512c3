#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "ErrorText.h"
#include "ScratchFolder.h"
#include "UserCaseFile.h"
#include "VexaCases.h"

/// Any bytes as a CSV file, read with any of its options: it is refused, or all its cases can be
/// read. The first four bytes of the input choose the options, as digits do.
namespace {

constexpr std::array<char, 5> kSeparators{',', ';', '\t', '|', '#'};
constexpr std::array<const char*, 6> kCodePages{"",         "windows-1252", "UTF-16LE",
                                                "UTF-16BE", "Shift_JIS",    "ISO-8859-1"};
constexpr std::size_t kOptionBytes = 4;

UserCaseFileSpec specOf(std::string_view options, const std::string& path)
{
    const auto choice = [&](std::size_t option, std::size_t count) {
        return static_cast<unsigned char>(options[option] - '0') % count;
    };
    UserCaseFileSpec spec;
    spec.Init(path, true, false);
    spec.SetKind(CaseFileKind::Csv);
    spec.SetCsvForm({kSeparators.at(choice(0, kSeparators.size())), choice(1, 2) == 1});
    spec.SetHeader(choice(2, 2) == 0);
    spec.SetCodePage(kCodePages.at(choice(3, kCodePages.size())));
    return spec;
}

/// Every value of every case.
void readAll(const UserInputCaseFile& file)
{
    const VEXA_DataSource& source = *file.DataSource();
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    long long count = 0;
    for (; cases->NextCase() != 0; ++count)
        for (int column = 0; column < source.ColumnCount(); ++column)
            if (const int width = source.GetVariable(column).GetType(); width > 0)
                (void)std::string(cases->GetStringValue(column), static_cast<std::size_t>(width));
            else
                (void)cases->GetNumericValue(column);
    require(count == file.CaseCount());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    const std::string_view input = textOf(data, size);
    if (input.size() <= kOptionBytes)
        return 0;
    folder.put("input.csv", input.substr(kOptionBytes));
    try {
        readAll(UserInputCaseFile(specOf(input, folder.host("input.csv")), nullptr));
    } catch (const ErrorText&) { // what most files come to
    }
    return 0;
}

#include <cstddef>
#include <cstdint>
#include <string>

#include "ErrorText.h"
#include "ScratchFolder.h"
#include "UserCaseFile.h"
#include "VexaCases.h"

/// Any bytes as a SAV or a Parquet file: it is refused, or its dictionary and its cases can be
/// read. The first byte of the input, a digit from 0 to 3, selects which of the two it is, and
/// whether what it declares missing is declared.
namespace {

void readDictionary(const UserInputCaseFile& file)
{
    const VEXA_DataSource& source = *file.DataSource();
    for (int column = 0; column < source.ColumnCount(); ++column) {
        (void)file.Field(column).GetName();
        (void)source.GetVariable(column).GetLabel();
    }
    (void)file.Documents();
    require(source.GetWeightVarIndex() < source.ColumnCount());
    for (int i = 0; i < source.GetNSplitVars(); ++i)
        require(source.GetSplitVarIndex(i) < source.ColumnCount());
}

void readCases(const UserInputCaseFile& file)
{
    constexpr long long kMost = 1000; // a run length may claim billions of values
    const VEXA_DataSource& source = *file.DataSource();
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    while (cases->GetCaseCount() < kMost && cases->NextCase() != 0)
        for (int column = 0; column < source.ColumnCount(); ++column)
            if (const int width = source.GetVariable(column).GetType(); width > 0)
                (void)std::string(cases->GetStringValue(column), static_cast<std::size_t>(width));
            else
                (void)cases->GetNumericValue(column);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    const std::string_view input = textOf(data, size);
    if (input.empty())
        return 0;
    folder.put("input", input.substr(1));
    UserCaseFileSpec spec;
    spec.Init(folder.host("input"), true, false);
    spec.SetKind((data[0] & 1) != 0 ? CaseFileKind::Parquet : CaseFileKind::Sav);
    spec.SetDeclaresMissing((data[0] & 2) == 0);
    try {
        const UserInputCaseFile file(spec, nullptr);
        readDictionary(file);
        readCases(file);
    } catch (const ErrorText&) { // what most files come to
    }
    return 0;
}

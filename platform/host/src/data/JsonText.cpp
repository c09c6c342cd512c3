#include "data/JsonText.h"

#include <fcntl.h>
#include <string_view>
#include <utility>

#include "FileServices.h"
#include "base/FileDescriptor.h"
#include "base/JsonDepth.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "datafile/CsvScanner.h"
#include "text/CodePage.h"

namespace {

constexpr std::string_view kJsonMark = "\xEF\xBB\xBF";
constexpr std::size_t kJsonBlock = std::size_t{256} * 1024;
constexpr int kDeepest = 100; ///< nesting of lists and objects

void checkRecords(const std::string& path, base::JsonNesting& nesting, std::string_view piece)
{
    if (!nesting.take(piece))
        throw CaseFileError(path, ": values are nested more than " + std::to_string(kDeepest) +
                                      " levels deep");
    if (nesting.longestRecord() > datafile::kLongestCsvRecord)
        throw CaseFileError(path, ":" + std::to_string(nesting.longestLine()) + ": " +
                                      datafile::kRecordTooLong);
}

} // namespace

JsonText checkedJson(const std::string& path, const std::function<void()>& look)
{
    const base::FileDescriptor source(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        failToRead(path);
    JsonText text;
    base::JsonNesting nesting(kDeepest);
    std::string block(kJsonBlock, '\0');
    bool isFirst = true;
    ssize_t got = 0;
    while ((got = source.readUpTo(block.data(), block.size())) > 0) {
        look();
        std::string_view piece(block.data(), static_cast<std::size_t>(got));
        if (std::exchange(isFirst, false)) {
            if (piece.starts_with("\xff\xfe") || piece.starts_with("\xfe\xff"))
                throw CaseFileError(path, ": the file is UTF-16; JSON must be UTF-8");
            if (piece.starts_with(kJsonMark)) {
                piece.remove_prefix(kJsonMark.size());
                text.copy = std::make_shared<datafile::ScratchFile>(
                    base::nativePath(hostToUtf8(GetVexaTempPath())));
            }
        }
        checkRecords(path, nesting, piece);
        if (text.copy && !text.copy->write(piece))
            failToCopy(path, "without its mark");
    }
    if (got < 0)
        failToRead(path);
    if (text.copy)
        text.copy->rewind();
    text.longestRecord = nesting.longestRecord();
    return text;
}

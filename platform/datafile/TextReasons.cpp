#include "datafile/TextReasons.h"

#include <system_error>

#include "datafile/CsvProfile.h"
#include "datafile/CsvScanner.h"
#include "datafile/CsvValue.h"

namespace datafile {
namespace {

constexpr std::uint64_t kRecordsBetweenStops = 1024;

struct Column
{
    std::uint64_t texts = 0;
    std::uint64_t others = 0;
    TextReason first;

    void take(const CsvField& field, std::uint64_t line)
    {
        const CsvKind kind = kindOf(field);
        if (kind == CsvKind::Missing)
            return;
        if (kind != CsvKind::Text) {
            ++others;
            return;
        }
        if (texts++ == 0) {
            first.text = textOf(field);
            first.line = line;
        }
    }
};

} // namespace

std::vector<TextReason> textReasons(const std::string& path, bool hasHeader,
                                    const std::function<bool()>& goOn)
{
    const std::vector<std::string> names = CsvProfile(path, hasHeader).names();
    std::vector<Column> columns(names.size());
    CsvScanner scanner(path);
    std::vector<CsvField> fields;
    if (hasHeader)
        scanner.next(fields);
    for (std::uint64_t record = 0; scanner.next(fields); ++record) {
        if (record % kRecordsBetweenStops == 0 && !goOn())
            return {};
        for (std::size_t i = 0; i < columns.size() && i < fields.size(); ++i)
            columns[i].take(fields[i], scanner.line());
    }
    std::vector<TextReason> reasons;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].texts > 0 && columns[i].others > columns[i].texts) {
            columns[i].first.column = i;
            columns[i].first.name = names[i];
            reasons.push_back(columns[i].first);
        }
    return reasons;
}

} // namespace datafile

#include "datafile/FileTables.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

#include <fcntl.h>

#include "datafile/ColumnTypes.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/InputFile.h"
#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

std::string lineEndAt(const std::string& text, std::size_t at)
{
    return text.substr(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1);
}

/// How many blank lines stand before the names: the database would take the first one for them. It
/// would also find no record at all if the blank lines ended in another way than the others.
std::size_t linesBeforeNames(const std::string& path)
{
    constexpr std::size_t kHead = 65536;
    constexpr const char* kEnds = "\r\n";
    std::string text(kHead, '\0');
    std::ifstream file(path, std::ios::binary);
    text.resize(static_cast<std::size_t>(
        file.read(text.data(), static_cast<std::streamsize>(kHead)).gcount()));
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    const std::size_t names = std::min(text.find_first_not_of(kEnds), text.size());
    if (names == 0)
        return 0;
    const std::size_t end = text.find_first_of(kEnds, names);
    const std::string lineEnd = lineEndAt(text, end == std::string::npos ? 0 : end);
    for (std::size_t at = 0; at < names; at += lineEnd.size())
        if (lineEndAt(text, at) != lineEnd)
            throw Fault(faults::kNotOfItsKind,
                        "read: " + path + ":1: this is not a CSV file: its lines end in two ways");
    return names / lineEnd.size();
}

} // namespace

std::string rejectScansOf(const std::string& rejects)
{
    return rejects + "_scans";
}

std::string csvTable(const std::string& path, bool hasHeader, const Fields& columns,
                     const std::string& rejects)
{
    // Everything is said, so that the database guesses nothing: not the delimiter, not lines to
    // skip, not comments, not columns in the names of folders. A quoted nothing is an empty text.
    std::string sql = "read_csv(" + quotedLiteral(literalPath(path)) +
                      ", auto_detect = false, delim = ',', quote = '\"', escape = '\"', "
                      "comment = '', compression = 'none', allow_quoted_nulls = false, "
                      "hive_partitioning = false, header = ";
    sql += hasHeader ? "true, skip = " + std::to_string(linesBeforeNames(path)) : "false, skip = 0";
    if (!rejects.empty())
        sql += ", store_rejects = true, rejects_table = " + quotedLiteral(rejects) +
               ", rejects_scan = " + quotedLiteral(rejectScansOf(rejects));
    sql += ", columns = {";
    const char* separator = "";
    for (const CFField& column : columns) {
        sql += separator + quotedLiteral(column.GetName()) + ": '" +
               sqlTypeOf(column.GetStorage()) + "'";
        separator = ", ";
    }
    return sql + "})";
}

std::string parquetTable(const std::string& path)
{
    return "read_parquet(" + quotedLiteral(literalPath(path)) + ", hive_partitioning = false)";
}

std::string parquetMetadata(duck::Connection& connection, const std::string& path,
                            const std::string& key)
{
    try {
        duck::Result values = connection.query("SELECT decode(value) FROM parquet_kv_metadata(" +
                                               quotedLiteral(literalPath(path)) +
                                               ") WHERE key = " + quotedLiteral(key) + "::BLOB");
        return values.rows() > 0 ? values.text(0, 0) : std::string();
    } catch (const duck::QueryError&) {
        return {};
    }
}

std::shared_ptr<ScratchFile> openSealed(const std::string& path, const std::string& password,
                                        const std::string& scratchFolder,
                                        const SealedFileStep& step)
{
    const FileDescriptor sealed(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!sealed)
        throw std::system_error(errno, std::generic_category(), path);
    auto plain = std::make_shared<ScratchFile>(scratchFolder);
    openSealedFile(sealed.get(), plain->descriptor(), password, step);
    return plain;
}

} // namespace datafile

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <unistd.h>

#include "DataFileNames.h"
#include "datafile/CsvFault.h"
#include "datafile/CsvScanner.h"
#include "datafile/Duck.h"

namespace EmbeddedHV {
namespace {

/// A record as text: its line, then its fields, quoted ones in angle brackets.
using Records = std::vector<std::string>;

/// The rules of a CSV text, one letter at a time: slow, and plain to see.
Records recordsByLetter(const std::string& text)
{
    Records records;
    std::size_t at = 0;
    int line = 1;
    const auto isEnd = [&] { return at >= text.size() || text[at] == '\n' || text[at] == '\r'; };
    while (true) {
        for (; at < text.size() && isEnd(); ++at)
            line += text[at] == '\n' || (at + 1 < text.size() && text[at + 1] != '\n') ? 1 : 0;
        if (at >= text.size())
            return records;
        std::string record = std::to_string(line);
        for (bool more = true; more;) {
            const bool isBlankFirst = text.compare(at, 2, " \"") == 0;
            if (isBlankFirst || (at < text.size() && text[at] == '"')) {
                at += isBlankFirst ? 1 : 0;
                record += "|<";
                for (++at; at < text.size() && (text[at] != '"' || text[at + 1] == '"'); ++at) {
                    line += text[at] == '\n' ? 1 : 0;
                    record += text[at];
                    if (text[at] == '"') // the first of two
                        record += text[++at];
                }
                record += '>';
                while (!isEnd() && text[at] != ',')
                    ++at;
            } else {
                record += '|';
                while (!isEnd() && text[at] != ',')
                    record += text[at++];
            }
            more = at < text.size() && text[at] == ',';
            at += more ? 1 : 0;
        }
        records.push_back(record);
    }
}

/// The records that a scanner finds, and their flaws. Those with `fieldCount` fields are read
/// without splitting them where that is possible, and counted in `fast`.
struct Found
{
    Records records;
    Records flaws;
    std::size_t fast = 0;

    explicit Found(CsvScanner& scanner, std::size_t fieldCount = 0, std::size_t most = SIZE_MAX)
    {
        std::vector<CsvField> fields;
        while (records.size() < most) {
            if (fieldCount > 0 && scanner.nextWellFormed(fieldCount)) {
                ++fast;
                fields.clear();
                for (std::size_t column = 0; column < fieldCount; ++column)
                    fields.push_back(scanner.field(column));
            } else if (!scanner.next(fields)) {
                return;
            }
            take(scanner, fields);
        }
    }

private:
    void take(const CsvScanner& scanner, const std::vector<CsvField>& fields)
    {
        std::string record = std::to_string(scanner.line());
        for (const CsvField& field : fields) {
            const std::string text(field.text);
            record += field.quoted ? "|<" + text + ">" : "|" + text;
        }
        records.push_back(record);
        if (scanner.flaw())
            flaws.push_back(scanner.flaw()->described());
    }
};

const char* const kOtherFields[] = {R"(5" pipe)",    R"( "blank")", R"("after" )", R"("text"after)",
                                    "\"line\nend\"", "a,b",         "\"",          "\n",
                                    "\r\n",          "\r"};

/// Well-formed records of `fieldCount` fields; if `hasOthers`, some that are not.
std::string usualText(std::mt19937& random, const std::string& lineEnd, std::size_t fieldCount,
                      std::size_t records, bool hasOthers)
{
    const char* const usual[] = {
        "",        "1",           "text",      R"("")",      R"("a,b")",
        R"("""")", R"("say """)", R"("x""y")", R"(", "",")", "12345678901234567890"};
    std::string text;
    for (std::size_t i = 0; i < records; ++i) {
        for (std::size_t field = 0; field < fieldCount; ++field) {
            text += field == 0 ? "" : ",";
            text += hasOthers && random() % 50 == 0
                        ? kOtherFields[random() % std::size(kOtherFields)]
                        : usual[random() % std::size(usual)];
        }
        text += lineEnd;
    }
    if (random() % 2 == 0)
        text.resize(text.size() - lineEnd.size());
    return text;
}

TEST(CsvScanner, FindsTheRecordsThatTheRulesGive)
{
    const std::string path = std::filesystem::temp_directory_path().string() + "/hv_scanner_" +
                             std::to_string(getpid()) + ".csv";
    std::mt19937 random(7);
    // Long texts end somewhere in every buffer that the scanner reads, quotes and line ends too.
    for (int round = 0; round < 400; ++round) {
        const std::size_t size = round % 40 == 0 ? 300000 : random() % 300;
        std::string text;
        for (std::size_t i = 0; i < size; ++i)
            text += R"(aab1,,", )"
                    "\n\r\n"[random() % 11];
        std::ofstream(path, std::ios::binary) << text;
        CsvScanner scanner(path);
        ASSERT_EQ(Found(scanner).records, recordsByLetter(text)) << "round " << round;
    }
    std::ofstream(path, std::ios::binary) << "a\n\n\nb\n";
    CsvScanner scanner(path);
    scanner.takeBlankLines();
    EXPECT_EQ(Found(scanner, 0, 5).records, (Records{"1|a", "2|", "3|", "4|b"}));
    std::filesystem::remove(path);
}

TEST(CsvScanner, FindsTheSameWithoutSplittingWellFormedRecords)
{
    const std::string path = std::filesystem::temp_directory_path().string() + "/hv_well_formed_" +
                             std::to_string(getpid()) + ".csv";
    std::size_t fast = 0;
    const auto check = [&](const std::string& text, std::size_t fieldCount) {
        std::ofstream(path, std::ios::binary) << text;
        CsvScanner scanner(path);
        CsvScanner other(path);
        const Found split(scanner);
        const Found found(other, fieldCount);
        ASSERT_EQ(split.records, recordsByLetter(text)) << text;
        ASSERT_EQ(found.records, split.records) << text;
        ASSERT_EQ(found.flaws, split.flaws) << text;
        fast += found.fast;
    };
    std::mt19937 random(11);
    for (int round = 0; round < 1000; ++round) {
        const char* const lineEnds[] = {"\n", "\r\n", "\r"};
        const std::size_t fieldCount = round % 5 == 0 ? 1 : 3;
        const std::size_t records = round % 100 == 0 ? 20000 : random() % 30 + 1;
        check(usualText(random, lineEnds[round % 3], fieldCount, records, round % 4 != 0),
              fieldCount);
    }
    EXPECT_GT(fast, 100000);
    // Each byte of a block once.
    for (const char* const field : kOtherFields)
        for (std::size_t length = 0; length < 64; ++length)
            check(std::string(length, 'x') + ",y,z\n1," + field + ",3\n1,2,3\n", 3);
    std::filesystem::remove(path);
}

/// What the scanner knows of quotes, when it has read a file. A block is 64 bytes long.
TEST(CsvScanner, FindsQuotesThatMisleadThreads)
{
    const std::string path = std::filesystem::temp_directory_path().string() + "/hv_quotes_" +
                             std::to_string(getpid()) + ".csv";
    struct Case
    {
        const char* record;
        bool misleadsAfterLf, misleadsAfterCrLf;
    };
    const Case kCases[] = {
        {"a,b", false, false},       {R"("a","b c")", false, false},     {R"(,"")", false, false},
        {R"("a,b",c)", false, true}, {R"("say ""no""",c)", false, true}, {R"("""",c)", false, true},
        {"\"a\nb\",c", true, true},  {R"(5" pipe,c)", true, true},
    };
    for (const auto& [record, misleadsAfterLf, misleadsAfterCrLf] : kCases) {
        for (const std::string lineEnd : {"\n", "\r\n"}) {
            for (std::size_t before = 0; before < 70; ++before) {
                SCOPED_TRACE(record + lineEnd + std::to_string(before));
                std::ofstream(path, std::ios::binary) << "x," << std::string(before, 'x') << lineEnd
                                                      << record << lineEnd << "a,b" << lineEnd;
                CsvScanner scanner(path);
                std::vector<CsvField> fields;
                while (scanner.next(fields))
                    continue;
                EXPECT_EQ(scanner.hasQuotes(), std::string(record).find('"') != std::string::npos);
                EXPECT_EQ(scanner.misleadsThreads(),
                          lineEnd == "\n" ? misleadsAfterLf : misleadsAfterCrLf);
            }
        }
    }
    std::filesystem::remove(path);
}

TEST(DatabaseMessages, HaveAHeadline)
{
    const std::pair<const char*, const char*> rows[] = {
        {"IO Error: no file \"a: b\"", "no file \"a: b\""},
        {"Out of Memory Error: too much\nPossible Error: none", "too much"},
        {"without a class\nand more", "without a class"},
        {"", ""},
    };
    for (const auto& [message, line] : rows)
        EXPECT_EQ(datafile::headline(message), line);
}

TEST(Statements, WithANulAreRefusedAndNotCut)
{
    using namespace std::string_literals;
    duckdb_database database = datafile::duck::openInMemory();
    {
        datafile::duck::Connection connection(database);
        const std::string cut = "SELECT 1\0, 2"s;
        EXPECT_THROW(connection.query(cut), datafile::duck::QueryError);
        EXPECT_THROW(datafile::duck::Prepared(connection, cut), datafile::duck::QueryError);
    }
    duckdb_close(&database);
}

} // namespace
} // namespace EmbeddedHV

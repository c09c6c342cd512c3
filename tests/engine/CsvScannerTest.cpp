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

Records recordsOf(CsvScanner& scanner, std::size_t most = SIZE_MAX)
{
    Records records;
    std::vector<CsvField> fields;
    while (records.size() < most && scanner.next(fields)) {
        std::string record = std::to_string(scanner.line());
        for (const CsvField& field : fields)
            record +=
                field.quoted ? "|<" + std::string(field.text) + ">" : "|" + std::string(field.text);
        records.push_back(record);
    }
    return records;
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
        ASSERT_EQ(recordsOf(scanner), recordsByLetter(text)) << "round " << round;
    }
    std::ofstream(path, std::ios::binary) << "a\n\n\nb\n";
    CsvScanner scanner(path);
    scanner.takeBlankLines();
    EXPECT_EQ(recordsOf(scanner, 5), (Records{"1|a", "2|", "3|", "4|b"}));
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

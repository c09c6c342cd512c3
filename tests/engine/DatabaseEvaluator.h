#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "DialectCases.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "expression/ExpressionCompiler.h"
#include "language/Parser.h"

namespace EmbeddedHV {

/// A field of the record that expressions are about, and its value as a text; null if missing.
struct RecordField
{
    const char* name;
    ValueType type;
    const char* value;
};

/// A field of each type, a missing one of most (m and the first letter), and an awkward name.
inline constexpr RecordField kRecord[] = {
    {"i", ValueType::Integer, "7"},
    {"j", ValueType::Integer, "-2"},
    {"r", ValueType::Real, "2.5"},
    {"s", ValueType::String, "Ab c"},
    {"d", ValueType::Date, "2024-02-29"},
    {"t", ValueType::Time, "03:04:05.5"},
    {"ts", ValueType::Timestamp, "2024-02-29 23:59:58.25"},
    {"l", ValueType::List, "1.5, 2"},
    {"mi", ValueType::Integer, nullptr},
    {"mr", ValueType::Real, nullptr},
    {"ms", ValueType::String, nullptr},
    {"md", ValueType::Date, nullptr},
    {"a \"field", ValueType::Integer, "1"},
};

/// Compiles expressions over one record and lets the database say what they give.
class DatabaseEvaluator : public testing::Test
{
protected:
    DatabaseEvaluator()
    {
        for (const RecordField& field : kRecord)
            _schema.push_back({field.name, field.type});
        query("CREATE TABLE record AS " + recordOf(duckDialect()));
        if (_cases.isWritten())
            _cases.prepare("view record=" + recordOf(sparkDialect()));
    }

    static std::string recordOf(const Dialect& dialect)
    {
        std::string columns;
        for (const RecordField& field : kRecord)
            columns += (columns.empty() ? "SELECT " : ", ") +
                       DialectCases::cell(dialect, field.type, field.value) + " AS " +
                       dialect.name(field.name);
        return columns;
    }

    /// "value:Type" of the body of a lambda over the record, "missing:Type", or the error's text.
    /// The type that the compiler claims must be the one that the database sees.
    std::string valueOf(const std::string& body, const std::string& definitions = {})
    {
        try {
            const SqlExpression compiled = compile("ctx => x => " + body, definitions);
            // The server has not enough stack for hundreds of levels.
            if (_cases.isWritten() && body.size() < 1000)
                _cases.add(
                    body, {compiled, "FROM record"},
                    {compile("ctx => x => " + body, definitions, sparkDialect()), "FROM record"});
            return run(compiled) + ":" + wordOf(compiled.type);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    /// The error that a body causes; the id is "none" if it causes none.
    JobError errorOf(const std::string& body, const std::string& definitions = {})
    {
        try {
            compile("ctx => x => " + body, definitions);
        } catch (const JobError& error) {
            return error;
        }
        return JobError("none", "no error");
    }

    SqlExpression compile(const std::string& lambda, const std::string& definitions = {},
                          const Dialect& dialect = duckDialect())
    {
        const auto program = language::parseProgram(definitions);
        return compileRecordLambda(
            *language::parseExpression(lambda),
            {dialect, _schema, language::boundValues(program), "filterRecords"});
    }

    SqlExpression compileField(const std::string& lambda, std::string& field,
                               const std::string& definitions = {})
    {
        const auto program = language::parseProgram(definitions);
        return compileFieldLambda(
            *language::parseExpression(lambda),
            {duckDialect(), _schema, language::boundValues(program), "deriveField"}, field);
    }

    std::string run(const SqlExpression& compiled)
    {
        const std::string value = query("SELECT coalesce(CAST((" + compiled.sql +
                                        ") AS VARCHAR), 'missing') FROM record");
        const std::string type = query("SELECT typeof(" + compiled.sql + ") FROM record");
        EXPECT_TRUE(type == duckDialect().typeName(compiled.type) ||
                    compiled.type == ValueType::Null)
            << type << " of " << compiled.sql;
        return value;
    }

    std::string query(const std::string& sql)
    {
        duck::Result result = _connection->query(sql);
        return result.rows() > 0 ? result.text(0, 0) : std::string();
    }

private:
    Database _database;
    ConnectionLease _connection = _database.connect();
    DialectCases _cases{*_connection};
    Schema _schema;
};

} // namespace EmbeddedHV

#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "ErrorIds.h"
#include "JobError.h"
#include "duckdb/DuckDialect.h"
#include "expression/ExpressionCompiler.h"
#include "expression/ValueTypes.h"
#include "language/Parser.h"
#include "runtime/Database.h"

namespace EmbeddedHV {

/// Compiles expressions over one record and lets the database say what they give. The record has
/// a field of each type, a missing one of most (m and the first letter), and awkward names.
class DatabaseEvaluator : public testing::Test
{
protected:
    DatabaseEvaluator()
    {
        query("CREATE TABLE record AS SELECT 7::BIGINT AS i, (-2)::BIGINT AS j, 2.5::DOUBLE AS r, "
              "'Ab c'::VARCHAR AS s, DATE '2024-02-29' AS d, TIME '03:04:05.5' AS t, "
              "TIMESTAMP '2024-02-29 23:59:58.25' AS ts, [1.5::DOUBLE, 2] AS l, "
              "NULL::BIGINT AS mi, NULL::DOUBLE AS mr, NULL::VARCHAR AS ms, NULL::DATE AS md, "
              "1::BIGINT AS \"a \"\"field\"");
    }

    /// "value:Type" of the body of a lambda over the record, "missing:Type", or the error's text.
    /// The type that the compiler claims must be the one that the database sees.
    std::string valueOf(const std::string& body, const std::string& definitions = {})
    {
        try {
            const SqlExpression compiled = compile("ctx => x => " + body, definitions);
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

    SqlExpression compile(const std::string& lambda, const std::string& definitions = {})
    {
        const auto program = language::parseProgram(definitions);
        return compileRecordLambda(
            *language::parseExpression(lambda),
            {duckDialect(), _schema, language::boundValues(program), "filterRecords"});
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
    const Schema _schema = {
        {"i", ValueType::Integer},        {"j", ValueType::Integer}, {"r", ValueType::Real},
        {"s", ValueType::String},         {"d", ValueType::Date},    {"t", ValueType::Time},
        {"ts", ValueType::Timestamp},     {"l", ValueType::List},    {"mi", ValueType::Integer},
        {"mr", ValueType::Real},          {"ms", ValueType::String}, {"md", ValueType::Date},
        {"a \"field", ValueType::Integer}};
};

} // namespace EmbeddedHV

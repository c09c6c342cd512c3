#pragma once

#include <cstdlib>
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

#include "duckdb/DuckDialect.h"
#include "expression/FunctionCall.h"
#include "expression/ValueTypes.h"
#include "runtime/Database.h"
#include "spark/SparkDialect.h"

namespace EmbeddedHV {

/// Statements for a server, each with the values that the embedded database gives. They are lines
/// of JSON in the file that HV_DIALECT_CASES names; without it, nothing is written.
class DialectCases
{
public:
    explicit DialectCases(duck::Connection& connection) : _connection(connection) {}

    /// A value of the same SQL in both dialects, as a text.
    static std::string cell(const Dialect& dialect, ValueType type, const char* text)
    {
        if (text && type == ValueType::List)
            return dialect.list(text);
        return dialect.cast(text ? dialect.literal(text) : "NULL", type);
    }

    /// A value in a form that all databases write in the same way. Reals are compared as numbers.
    static std::string plain(const Dialect& dialect, const SqlExpression& value)
    {
        switch (value.type) {
        case ValueType::String:
            return "hex(" + value.sql + ")";
        case ValueType::List:
            return dialect.listText(value.sql);
        case ValueType::Date:
        case ValueType::Time:
        case ValueType::Timestamp:
            return dialect.cast(dialect.onModelScale(value.sql, value.type), ValueType::String);
        default:
            return "CAST(" + value.sql + " AS " + dialect.typeName(ValueType::String) + ")";
        }
    }

    /// A column of a SELECT in one dialect. `rest` is what follows the columns.
    struct Column
    {
        SqlExpression value;
        std::string rest;
    };

    void add(const std::string& what, const Column& embedded, const Column& spark)
    {
        if (!_file.is_open())
            return;
        nlohmann::json line = {{"what", what},
                               {"type", wordOf(spark.value.type)},
                               {"sql", plain(sparkDialect(), spark.value)},
                               {"rest", spark.rest}};
        try {
            duck::Result rows = _connection.query("SELECT v IS NULL, v FROM (SELECT " +
                                                  plain(duckDialect(), embedded.value) + " AS v " +
                                                  embedded.rest + ")");
            for (std::size_t row = 0; row < rows.rows(); ++row)
                line["values"].push_back(rows.text(0, row) == "true"
                                             ? nlohmann::json()
                                             : nlohmann::json(rows.text(1, row)));
        } catch (const duck::QueryError&) {
            line["fails"] = true;
        }
        _file << line.dump() << '\n';
    }

    /// Adds a statement that is run before the cases.
    void prepare(const std::string& statement)
    {
        _file << nlohmann::json({{"prepare", statement}}).dump() << '\n';
    }
    bool isWritten() const { return _file.is_open(); }

private:
    static std::ofstream opened()
    {
        const char* path = std::getenv("HV_DIALECT_CASES");
        return path ? std::ofstream(path, std::ios::app) : std::ofstream();
    }

    duck::Connection& _connection;
    std::ofstream _file = opened();
};

} // namespace EmbeddedHV

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "DialectCases.h"
#include "expression/FieldTypes.h"
#include "language/Parser.h"

// What both dialects give for values at the edges. The embedded database computes the values here;
// a test with a cluster compares them.

namespace EmbeddedHV {
namespace {

/// A field and its values, which records repeat. The numbers of values have no common factor, so
/// that records combine them.
struct EdgeField
{
    const char* name;
    ValueType type;
    const char* values; ///< separated by ^; ~ is missing
};

std::vector<std::string> splitAt(std::string_view text, std::string_view separator)
{
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + separator.size());
    }
}

constexpr std::size_t kRecords = 140;
constexpr const char* kEdgeFile = "SCRATCH/edges [1]*"; ///< in the scratch folder of the test

const EdgeField kEdges[] = {
    {"i", ValueType::Integer,
     "0^1^-1^7^~^9007199254740993^9223372036854775807^-9223372036854775808^-9007199254740993^"
     "1000000^4611686018427387904"},
    {"k", ValueType::Integer, "3^-2^0^~^12^1^31"},
    {"r", ValueType::Real,
     "0.0^-0.0^0.5^-0.5^2.5^-2.5^1.005^~^1e20^-1e20^1e16^9999999999999998^123456789.125^1e-4^"
     "9.9e-5^0.1^1e300^5e-324^nan^inf^-inf^4503599627370497.5^0.49999999999999994^1e23^2e-3^"
     "9223372036854775807^-9223372036854775808^1.7976931348623157e308^8.41e21"},
    {"q", ValueType::Real, "1^-1^0.1^~^3^inf^1e10^-7.25^0.3^1e-5^365.25^2^1e308"},
    {"s", ValueType::String,
     "^ ^a^~^Ab c^größe^ß^\xC7\xB0^e\xCC\x81^\xF0\x9F\x98\x80x^ΑΣ Σ^İi^\xE1\xBE\xB3^"
     "\xEF\xAC\x81^\xC2\xA0 x\xE3\x80\x80^\tx\n^a;b;;c^it's^\\n^100%^$1^'^Z"},
    {"u", ValueType::String, "a^^ß^~^;^ ^\\^.^b;^\xCC\x81^Σ^x^Ab"},
    {"n", ValueType::String,
     "1^ 1 ^+5^-0^1e5^1E-3^.5^5.^1e400^-1e-400^inf^NaN^^1_0^0x10^1d^1f^12L^9223372036854775807^"
     "9223372036854775808^\t7\n^1 2^~^١^1e^+-1^\xC2\xA0"
     "1^007^1,5^-9223372036854775808^0.1e1"},
    {"p", ValueType::String,
     "2024-02-29^2023-02-29^ 2024-2-9 ^24-01-01^0001-01-01^0000-01-01^1582-10-04^1582-10-10^"
     "1582-10-15^9999-12-31^10000-01-01^2024-02-29 23:59^2024-02-29T23:59:59.123456^"
     "2024-02-29  1:2:3.5^2024-02-29 24:00:00^23:59:59.9^7:5^12:60^epoch^infinity^^~^2024^"
     "2024-02^29.02.24^2024-366^2023-366^2023-365^1 February 1999^1 FEB 68^31 nov 2000^"
     "Mon, 3 Mar 2003 12:05:06 AM^Tuesday, 3 mar 2003 1:05:06 pm^12:30 am^12:30^"
     "2024-02-29 1:2:3.1234567^2024-13-01^2024-00-10^1:2:3.05^0:00 PM^13 PM"},
    {"d", ValueType::Date,
     "1970-01-01^2024-02-29^0001-01-01^1582-10-04^1582-10-15^9999-12-31^~^2021-01-03^1900-03-01"},
    {"e", ValueType::Date, "2000-01-31^~^0004-02-29^2024-12-31"},
    {"t", ValueType::Time, "00:00:00^23:59:59.999999^~^12:30:00.5^01:02:03"},
    {"ts", ValueType::Timestamp,
     "1970-01-01 00:00:00^1969-12-31 23:59:59.999999^0001-01-01 00:00:00^"
     "9999-12-31 23:59:59.999999^~^2024-02-29 23:59:58.25^1582-10-10 12:00:00^"
     "2023-12-31 00:00:00.000001"},
    {"us", ValueType::Timestamp, "2024-03-01 00:00:00^~^1999-12-31 12:00:00"},
};

std::string edgesOf(const Dialect& dialect)
{
    std::string names = "nr";
    for (const EdgeField& field : kEdges)
        names += std::string(", ") + field.name;
    std::string rows;
    for (std::size_t nr = 0; nr < kRecords; ++nr) {
        rows += (nr == 0 ? "(" : ", (") + dialect.literal(static_cast<std::int64_t>(nr));
        for (const EdgeField& field : kEdges) {
            const std::vector<std::string> values = splitAt(field.values, "^");
            const std::string& value = values[nr % values.size()];
            rows += ", " +
                    DialectCases::cell(dialect, field.type, value == "~" ? nullptr : value.c_str());
        }
        rows += ")";
    }
    return "SELECT * FROM (VALUES " + rows + ") AS t(" + names + ")";
}

/// Bodies over the fields. The overflow of an Integer fails a job, so such bodies use small ones.
constexpr std::string_view kBodies =
    "x.k + x.k * 3 - 1;; x.i / x.k;; x.i % x.k;; x.r % x.q;; x.r ** x.q;; -x.k;; -x.r;; "
    "x.r + x.q;; x.r * x.q;; x.r / x.q;; x.s + x.u;; x.i == x.k;; x.i < x.r;; x.r == x.q;; "
    "x.r >= x.q;; x.s < x.u;; x.s == x.u;; x.d < x.ts;; x.t <= x.t;; x.ts > x.us;; "
    "x.r > 0 && x.k > 0 || isMissing(x.s);; !(x.k > 1);; if (x.k > 1) x.i else x.k;; "
    "if (x.k > 1) x.r;; [x.r, x.q];; [x.r, x.q] == [x.q, x.r];; toReal(x.i);; toReal(x.n);; "
    "toReal(x.k > 0);; toInteger(x.r);; toInteger(x.q);; toInteger(x.n);; toString(x.i);; "
    "toString(x.r);; toString(x.q);; toString(x.r * x.q);; toString(x.r / 3);; "
    "toString(x.k > 1);; toString(x.d);; toString(x.t);; toString(x.ts);; "
    "toString(addDays(x.d, x.k * 100000));; toString(addMonths(x.ts, x.k * 3000));; "
    "toDate(x.p);; toTime(x.p);; toTimestamp(x.p);; toDate(x.p, \"dd.MM.yy\");; "
    "toDate(x.p, \"yyyy-D\");; toDate(x.p, \"d MMMM yyyy\");; toDate(x.p, \"d MMM yy\");; "
    "toTimestamp(x.p, \"E, d MMM y h:mm:ss a\");; "
    "toTimestamp(x.p, \"EEEE, d MMM y h:mm:ss a\");; toTime(x.p, \"hh:mm a\");; "
    "toTime(x.p, \"h:mm\");; toTime(x.p, \"H:mm:ss.SSS\");; toTime(x.p, \"HH a\");; "
    "toTimestamp(x.p, \"yyyy-MM-dd HH:mm:ss.SSSSSS\");; toDate(x.p, \"yy-MM-dd\");; "
    "toDate(x.p, \"yyyy\");; toTime(x.p, \"H:m\");; toTime(x.p, \"m:s\");; "
    "toTimestamp(x.p, \"H:mm:ss.S\");; toTimestamp(x.p, \"H:mm:ss.SSSS\");; toDate(x.ts);; "
    "toTime(x.ts);; toTimestamp(x.d);; date(2024, x.k, x.k);; date(x.i, 1, 1);; "
    "time(x.k, x.k, x.q);; time(23, 59, 59.9999996);; time(1, 2, 59.9999996);; "
    "timestamp(2024, 2, x.k, x.k, 59, 59.9999996);; timestamp(x.k, 1, 31, 1, 2, x.q);; "
    "[year(x.ts), quarter(x.ts), month(x.ts), week(x.ts), day(x.ts)];; "
    "[dayOfYear(x.ts), dayOfWeek(x.ts), hour(x.ts), minute(x.ts), second(x.ts)];; "
    "[year(x.d), week(x.d), dayOfWeek(x.d), hour(x.d)];; "
    "[hour(x.t), minute(x.t), second(x.t)];; year(addDays(x.d, -100000 * x.k));; "
    "addDays(x.d, x.k);; addDays(x.ts, x.k);; addDays(x.d, x.i);; addMonths(x.e, x.k);; "
    "addMonths(x.ts, x.k);; addMonths(x.d, x.i);; addSeconds(x.us, x.q);; "
    "addSeconds(x.us, x.r);; daysBetween(x.d, x.e);; daysBetween(x.ts, x.us);; "
    "secondsBetween(x.t, time(1, 0, 0));; secondsBetween(x.ts, x.us);; length(x.s);; "
    "lower(x.s);; upper(x.s);; trim(x.s);; ltrim(x.s);; rtrim(x.s);; substring(x.s, x.k);; "
    "substring(x.s, x.k, x.k);; substring(x.s, x.i, 2);; substring(x.s, 2, x.i);; "
    "startsWith(x.s, x.u);; endsWith(x.s, x.u);; contains(x.s, x.u);; indexOf(x.s, x.u);; "
    "replace(x.s, x.u, \"$1\");; concat(x.s, x.u, toString(x.k));; split(x.s, x.u, x.k);; "
    "split(x.s, \";\", x.i);; padLeft(x.s, x.k, x.u);; padRight(x.s, x.k, x.u);; abs(x.k);; "
    "abs(x.r);; sign(x.r);; sign(x.i);; floor(x.r);; ceiling(x.r);; truncate(x.r);; "
    "round(x.r);; round(x.r, 2);; round(x.r, x.k);; round(x.r, x.i);; round(x.q, -1);; "
    "toString(round(-0.04, 1));; toString(ceiling(-0.5));; toString(truncate(-0.5));; "
    "sqrt(x.r);; exp(x.q);; ln(x.r);; log10(x.r);; power(x.r, x.q);; power(x.q, x.r);; "
    "min(x.r, x.q);; max(x.r, x.q, x.i);; min(x.s, x.u);; max(x.d, x.ts);; min(x.k);; "
    "sin(x.r);; cos(x.q);; tan(x.q);; asin(x.r);; acos(x.q);; atan(x.r);; atan2(x.r, x.q);; "
    "isMissing(x.r);; ifMissing(x.s, x.u);; nullIf(x.r, x.q);; nullIf(x.s, x.u);; "
    "if (x.s == \"\") \"empty\" else x.s + \"'\\\\$\" + \"{env:HOME}\";; x.i + 1;; abs(x.i);; "
    "-x.i;; x.i * x.i";

/// Random bodies of a type. Functions whose results differ in the last digit are left out, because
/// others would enlarge the difference.
class RandomBodies
{
public:
    std::string body(ValueType type, int depth)
    {
        const auto& forms = _forms.at(type);
        const std::size_t fields = static_cast<std::size_t>(
            std::ranges::count_if(forms, [](const char* form) { return form[0] == 'x'; }));
        const std::string form = forms[_random() % (depth > 0 ? forms.size() : fields)];
        std::string text;
        for (std::size_t i = 0; i < form.size(); ++i)
            text += form[i] == '@' ? body(typeOf(form[++i]), depth - 1) : std::string(1, form[i]);
        return text;
    }

private:
    static ValueType typeOf(char letter)
    {
        constexpr std::string_view kLetters = "IRSDTZB"; // in the order of ValueType
        return static_cast<ValueType>(kLetters.find(letter));
    }

    /// Fields first. A letter behind @ is an argument of the type.
    /// Fields first.
    const std::map<ValueType, std::vector<const char*>> _forms = {
        {ValueType::Integer,
         {"x.k", "(@I + @I)", "(@I - @I)", "length(@S)", "sign(@R)", "indexOf(@S, @S)", "year(@D)",
          "(if (@B) @I else @I)", "dayOfYear(@D)"}},
        {ValueType::Real,
         {"x.r", "x.q", "(@R + @R)", "(@R - @R)", "(@R * @R)", "(@R / @R)", "(- @R)", "toReal(@S)",
          "floor(@R)", "truncate(@R)", "abs(@R)", "min(@R, @R)", "max(@R, @I)", "nullIf(@R, @R)"}},
        {ValueType::String,
         {"x.s", "x.u", "x.n", "(@S + @S)", "upper(@S)", "lower(@S)", "trim(@S)",
          "substring(@S, @I, @I)", "replace(@S, @S, @S)", "toString(abs(@R))", "toString(@I)",
          "toString(@D)", "split(@S, @S, @I)", "concat(@S, @S)", "padLeft(@S, @I, @S)",
          "(if (@B) @S else @S)"}},
        {ValueType::Date,
         {"x.d", "x.e", "addDays(@D, @I)", "addMonths(@D, @I)", "toDate(@S)", "ifMissing(@D, @D)"}},
        {ValueType::Boolean,
         {"x.k > 1", "(@R < @R)", "(@S == @S)", "isMissing(@S)", "(@B && @B)", "(@B || @B)",
          "(!(@B))", "startsWith(@S, @S)", "(@D <= @D)"}},
    };
    std::mt19937 _random{11};
};

/// Random texts of pieces that mean something in SQL.
std::string awkwardText(std::mt19937& random)
{
    constexpr std::string_view kPieces[] = {"'",
                                            "\"",
                                            "`",
                                            "\\",
                                            "\n",
                                            "\r",
                                            "\t",
                                            "\x01",
                                            "\x1f",
                                            ";",
                                            "--",
                                            "/*",
                                            "*/",
                                            "/*+ broadcast(t) */",
                                            "${env:HOME}",
                                            "${spark.app.name}",
                                            "$",
                                            "{",
                                            "}",
                                            ":name",
                                            "?",
                                            "%",
                                            "_",
                                            "\\u0041",
                                            "\\'",
                                            "'' OR 1=1",
                                            "`; DROP VIEW record; --",
                                            "größe",
                                            "\xF0\x9F\x98\x80",
                                            "\xE2\x80\xA8",
                                            " ",
                                            ".",
                                            "*",
                                            "SELECT",
                                            "IDENTIFIER('x')",
                                            "a",
                                            "\\0",
                                            "\\Z",
                                            "r'",
                                            "0",
                                            "[",
                                            "]",
                                            "#",
                                            "@",
                                            "<=>"};
    std::string text;
    for (std::size_t pieces = 1 + random() % 6; pieces > 0; --pieces)
        text += kPieces[random() % std::size(kPieces)];
    return text;
}

/// What the server's lexer reads from a literal; empty if that is not the whole text.
std::string readLiteral(const std::string& sql)
{
    std::string text;
    std::size_t at = 1;
    for (; at + 1 < sql.size() && sql[at] != '\''; ++at) {
        if (sql[at] == '\\' && sql[++at] == 'u') {
            text += static_cast<char>(std::stoi(sql.substr(at + 1, 4), nullptr, 16));
            at += 4;
        } else {
            text += sql[at];
        }
    }
    return sql.front() == '\'' && at + 1 == sql.size() && sql[at] == '\'' ? text : "";
}

class SparkDialectTest : public testing::Test
{
protected:
    SparkDialectTest()
    {
        for (const EdgeField& field : kEdges)
            _schema.push_back({field.name, field.type});
        _connection->query("CREATE TABLE edges AS " + edgesOf(duckDialect()));
    }

    SqlExpression compiled(const Dialect& dialect, const std::string& body)
    {
        const language::Definitions definitions;
        return compileRecordLambda(*language::parseExpression("ctx => x => " + body),
                                   {dialect, _schema, definitions, "filterRecords"});
    }

    /// The cluster reads the edges from a file, so that its workers compute.
    void prepare()
    {
        if (!_cases.isWritten())
            return;
        for (const SparkSetting& setting : kSparkSettings)
            _cases.prepare(std::string("set ") + setting.name + "=" + setting.value);
        _cases.prepare("command " + sparkDialect().fileOf("SELECT /*+ COALESCE(1) */ * FROM (" +
                                                              edgesOf(sparkDialect()) + ")",
                                                          {kEdgeFile, false, {}, {}, {}}));
        _cases.prepare("view edges=SELECT * FROM " + sparkDialect().parquetTable(kEdgeFile));
    }

    void add(const std::string& body)
    {
        const std::string rest = "FROM edges ORDER BY nr";
        _cases.add(body, {compiled(duckDialect(), body), rest},
                   {compiled(sparkDialect(), body), rest});
    }

    /// A column of relations that `from` writes in a dialect.
    template <class From>
    void addRelation(const std::string& what, const SqlExpression& column, const From& from)
    {
        _cases.add(what, {column, from(duckDialect())}, {column, from(sparkDialect())});
    }

    void addAggregate(const std::string& what, const AggregateCall& call, ValueType result)
    {
        for (const char* records :
             {"edges", "(SELECT * FROM edges WHERE nr < 0)",
              "(SELECT * FROM edges WHERE abs(r) < 1e16 AND abs(q) < 1e16)",
              "(SELECT * FROM edges WHERE nr IN (2, 3))", "(SELECT * FROM edges WHERE nr = 2)"})
            addAggregated(what, call, result, records, false);
        addAggregated(what, call, result, "edges", true);
    }

    void addAggregated(const std::string& what, const AggregateCall& call, ValueType result,
                       const std::string& records, bool hasGroups)
    {
        const auto from = [&](const Dialect& dialect) {
            const auto same = [](const std::string& value) { return value; };
            const auto typed = [&](const std::string& value) {
                return dialect.cast(value, result);
            };
            std::vector<AggregateColumn> columns{{call, "v", typed}};
            if (hasGroups)
                columns.push_back({{Aggregate::Key, ValueType::Integer, "t.k", ""}, "g", same});
            return "FROM (" + dialect.aggregated(records, columns) + ")" +
                   (hasGroups ? " ORDER BY g NULLS LAST" : "");
        };
        addRelation(what + " of " + records + (hasGroups ? " by k" : ""), {"v", result}, from);
    }

    Database _database;
    ConnectionLease _connection = _database.connect();
    DialectCases _cases{*_connection};
    Schema _schema;
};

TEST(SparkText, ReadsBackFromALiteralOrAName)
{
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        const std::string text = awkwardText(random);
        const std::string literal = sparkDialect().literal(text);
        EXPECT_EQ(readLiteral(literal), text);
        EXPECT_EQ(literal.find_first_of("$\n\r\x01"), std::string::npos) << literal;
        std::string name = sparkDialect().name(text);
        name = name.substr(1, name.size() - 2);
        for (std::size_t at = 0; (at = name.find('`', at)) != std::string::npos; ++at)
            name.erase(at, name.compare(at, 2, "``") == 0 ? 1 : 2); // a single one ends the name
        EXPECT_EQ(name, text);
    }
}

TEST_F(SparkDialectTest, ComparesValues)
{
    prepare();
    for (const std::string& body : splitAt(kBodies, ";; "))
        add(body);
    RandomBodies bodies;
    for (int i = 0; i < 60; ++i)
        for (const ValueType type : {ValueType::Integer, ValueType::Real, ValueType::String,
                                     ValueType::Date, ValueType::Boolean})
            add(bodies.body(type, 3));
}

TEST_F(SparkDialectTest, ComparesAggregates)
{
    const std::pair<Aggregate, const char*> functions[] = {{Aggregate::Count, "count"},
                                                           {Aggregate::Sum, "sum"},
                                                           {Aggregate::Mean, "mean"},
                                                           {Aggregate::Least, "min"},
                                                           {Aggregate::Greatest, "max"},
                                                           {Aggregate::Deviation, "sd"},
                                                           {Aggregate::Variance, "variance"},
                                                           {Aggregate::Median, "median"},
                                                           {Aggregate::Percentile, "percentile"},
                                                           {Aggregate::First, "first"},
                                                           {Aggregate::Last, "last"}};
    for (const std::string column : {"i", "k", "r", "q"})
        for (const auto& [function, name] : functions) {
            const bool isReal = column == "r" || column == "q";
            const bool isWhole =
                function == Aggregate::Count ||
                (!isReal && (function == Aggregate::Sum || function == Aggregate::Least ||
                             function == Aggregate::Greatest || function == Aggregate::First ||
                             function == Aggregate::Last));
            addAggregate(std::string(name) + "(" + column + ")",
                         {function, isReal ? ValueType::Real : ValueType::Integer, "t." + column,
                          "t.nr", 90},
                         isWhole ? ValueType::Integer : ValueType::Real);
        }
}

TEST_F(SparkDialectTest, ComparesRelations)
{
    const SqlExpression nr{"nr", ValueType::Integer};
    const auto ordered = [](const std::string& select) {
        return "FROM (" + select + ") ORDER BY nr";
    };
    for (const std::int64_t count :
         {std::int64_t(0), std::int64_t(3), std::int64_t(3'000'000'000)}) {
        addRelation("first " + std::to_string(count), nr, [&](const Dialect& dialect) {
            return ordered(dialect.leading({"nr", "edges", "", "hv_n", count}));
        });
        addRelation("least " + std::to_string(count), nr, [&](const Dialect& dialect) {
            return ordered(dialect.leading({"nr", "edges", "k NULLS LAST, nr", "hv_n", count}));
        });
    }
    for (const char* keys : {"k", "r", "k, u"})
        addRelation(std::string("distinct ") + keys, nr, [&](const Dialect& dialect) {
            return ordered(dialect.firstRecords("nr", dialect.ordered("edges", "hv"), keys, "hv"));
        });
    addRelation("copies", nr, [&](const Dialect& dialect) {
        return ordered("SELECT nr, " + dialect.copies("f", "hv_n", 1000, "x") +
                       " AS c FROM (SELECT *, " + dialect.cast("k", ValueType::Real) + " AS f, " +
                       dialect.recordNumber() + " AS hv_n FROM edges) WHERE f > 0");
    });
    addRelation("too many copies", nr, [&](const Dialect& dialect) {
        return ordered("SELECT nr, " + dialect.copies("f", "hv_n", 30, "x") +
                       " AS c FROM (SELECT *, " + dialect.cast("k", ValueType::Real) + " AS f, " +
                       dialect.recordNumber() + " AS hv_n FROM edges) WHERE f > 0");
    });
    addRelation("draws", {"count(*)", ValueType::Integer}, [&](const Dialect& dialect) {
        const std::string share = dialect.drawnShare(dialect.draw("hv_n", 7));
        return "FROM " + dialect.numbered("edges", "hv_n") + " WHERE " + share + " >= 0 AND " +
               share + " < 1 AND hv_n BETWEEN 1 AND 140";
    });
    std::mt19937 random(3);
    for (int i = 0; i < 50; ++i) {
        const std::string text = awkwardText(random);
        const std::string name = awkwardText(random);
        const auto column = [&](const Dialect& dialect) {
            return DialectCases::Column{{"t." + dialect.name(name), ValueType::String},
                                        "FROM (SELECT " + dialect.literal(text) + " AS " +
                                            dialect.name(name) + ") AS t"};
        };
        _cases.add(name, column(duckDialect()), column(sparkDialect()));
    }
}

/// A file that the cluster writes as CSV has the texts of the values when it is read again.
TEST_F(SparkDialectTest, ComparesFiles)
{
    if (!_cases.isWritten())
        return;
    const SparkDialect& spark = sparkDialect();
    const std::string path = "SCRATCH/a folder.csv";
    datafile::Fields fields;
    std::string columns;
    for (const Column& field : _schema) {
        fields.push_back(CFField(field.name, CFField::Continuous, storageOf(field.type)));
        columns +=
            (columns.empty() ? "" : ", ") +
            (field.type == ValueType::Real ? spark.finiteReal(field.name) + " AS " + field.name
                                           : std::string(field.name));
    }
    _cases.prepare("command " +
                   spark.fileOf("SELECT /*+ COALESCE(1) */ " + columns + " FROM edges ORDER BY nr",
                                {path, true, fields, {}, {}}));
    std::string texts;
    for (const Column& field : _schema)
        texts += (texts.empty() ? "" : ", ") + std::string(field.name);
    const std::string file = "(SELECT * FROM csv." + spark.name(path) +
                             " WITH ('header' = 'true', 'multiLine' = 'true', 'quote' = '\"', "
                             "'escape' = '\"', 'emptyValue' = '', 'nullValue' = 'no value') AS t(" +
                             texts + "))";
    for (const Column& field : _schema) {
        const Dialect& duck = duckDialect();
        const std::string value =
            field.type == ValueType::Real ? duck.finiteReal(field.name) : field.name;
        _cases.add("csv " + std::string(field.name),
                   {{duck.exactly(value, field.type, ValueType::String), ValueType::String},
                    "FROM edges ORDER BY nr"},
                   {{field.name, ValueType::String},
                    "FROM " + spark.ordered(file, "hv") + " ORDER BY hv"});
    }
}

} // namespace
} // namespace EmbeddedHV

#include "hvhost/describe/Info.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

#include <nlohmann/json.hpp>

#include "CFDatum.h"
#include "FormattedText.h"
#include "data/HVDataModel.h"
#include "hvhost/base/CommandLog.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/base/Text.h"
#include "hvhost/base/UserMessages.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/input/CsvSeparator.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/MissingTexts.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/show/TextTable.h"
#include "report/text/TerminalText.h"
#include "support/Conversions.h"
#include "support/Transcoding.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kLevels[] = {"unknown", "nominal", "ordinal", "scale"};
constexpr const char* kRoles[] = {"input", "target", "both", "none", "partition"};
constexpr int kInfoSchema = 1;

std::string utf8(const std::string& text)
{
    return transcodeToUTF8(text.c_str(), nullptr);
}

/// The word for a number, or "unknown".
std::string wordAt(const char* const* words, std::size_t count, int place)
{
    return place >= 0 && static_cast<std::size_t>(place) < count ? words[place] : "unknown";
}

/// How the cells of a table are written.
struct CellLanguage
{
    Wording wording = inEnglish;
    char decimalSign = '.';
};

/// A variable and its field, with its properties as texts.
class VariableFacts
{
public:
    VariableFacts(const VEXA_Variable& variable, const CFField& field, bool isInteger)
        : _variable(variable), _field(field), _isInteger(isInteger)
    {
    }

    std::string type(Wording wording = inEnglish) const
    {
        if (_variable.GetType() > 0)
            return filled(wording("text(^1)"), {Integer2String(_variable.GetType())});
        return wording(_isInteger ? "integer" : WordOf(_field.GetStorage()));
    }
    /// For a file without levels, the level that convert writes.
    std::string level() const
    {
        if (_variable.GetMeasurementLevel() == MeasurementLevel::Unknown)
            return _variable.GetType() > 0 ? "nominal" : "scale";
        return wordAt(kLevels, std::size(kLevels),
                      static_cast<int>(_variable.GetMeasurementLevel()));
    }
    std::string role() const { return wordAt(kRoles, std::size(kRoles), _variable.GetRole()); }
    const std::string& label() const { return _field.GetLabel(); }

    /// For example "1, 9 to 99"; empty for none.
    std::string missing(const CellLanguage& language) const
    {
        const CFMissingValues& missing = _field.GetMissingValues();
        std::string all;
        for (const CFDatum& value : missingValues())
            all += (all.empty() ? "" : ", ") + shown(value, language);
        if (!missing.GetRange().IsEmpty())
            all += (all.empty() ? "" : ", ") +
                   filled(language.wording("^1 to ^2"),
                          {endOf(missing.GetRange().GetLower(), "lowest", language),
                           endOf(missing.GetRange().GetUpper(), "highest", language)});
        return all;
    }

    /// For example "1 = male, 2 = female".
    std::string labels(const CellLanguage& language) const
    {
        std::string all;
        for (const CFValue& value : _field.GetValueLabels())
            all += (all.empty() ? "" : ", ") + shown(value.GetDatum(), language) + " = " +
                   value.GetLabel();
        return all;
    }

    Json json() const
    {
        Json json = {{"name", _field.GetName()}, {"type", type()},   {"level", level()},
                     {"role", role()},           {"label", label()}, {"format", format()}};
        for (const CFValue& value : _field.GetValueLabels())
            json["valueLabels"].push_back(
                {{"value", jsonOf(value.GetDatum())}, {"label", value.GetLabel()}});
        const CFMissingValues& missing = _field.GetMissingValues();
        for (const CFDatum& value : missingValues())
            json["missing"]["values"].push_back(jsonOf(value));
        if (!missing.GetRange().IsEmpty())
            json["missing"]["range"] = {{"from", limit(missing.GetRange().GetLower())},
                                        {"to", limit(missing.GetRange().GetUpper())}};
        return json;
    }

private:
    std::vector<CFDatum> missingValues() const
    {
        std::vector<CFDatum> all;
        if (_variable.GetType() > 0) {
            for (const std::string& text : missingTexts(_variable))
                all.emplace_back(text);
            return all;
        }
        for (const CFValue& value : _field.GetMissingValues().GetValues())
            all.push_back(value.GetDatum());
        return all;
    }
    /// The host has no open limits. It uses the lowest and the highest number instead.
    static bool isOpen(const CFDatum& limit)
    {
        constexpr double kMost = 1.7976931348623157e308;
        return limit.IsNull() || (limit.IsReal() && std::abs(limit.GetReal()) == kMost);
    }
    std::string endOf(const CFDatum& limit, const char* open, const CellLanguage& language) const
    {
        return isOpen(limit) ? language.wording(open) : shown(limit, language);
    }
    static Json limit(const CFDatum& limit) { return isOpen(limit) ? Json() : jsonOf(limit); }
    std::string shown(const CFDatum& datum, const CellLanguage& language) const
    {
        if (datum.IsString())
            return "\"" + datum.GetString() + "\"";
        if (!datum.IsReal())
            return datum.ToString(-1);
        std::string text = numberText(datum.GetReal(), _field.GetStorage());
        if (isNumber(_field.GetStorage()))
            std::replace(text.begin(), text.end(), '.', language.decimalSign);
        return text;
    }
    static Json jsonOf(const CFDatum& datum)
    {
        if (datum.IsString())
            return datum.GetString();
        if (datum.IsInteger())
            return datum.GetInteger();
        return datum.IsReal() ? Json(datum.GetReal()) : Json();
    }
    Json format() const
    {
        const VEXA_Format& format = _variable.GetFormat();
        return {{"type", format.type}, {"width", format.width}, {"decimals", format.decimals}};
    }

    const VEXA_Variable& _variable;
    const CFField& _field;
    bool _isInteger;
};

/// The properties of a whole dataset.
class DatasetFacts
{
public:
    DatasetFacts(const Dataset& dataset, char separator,
                 std::vector<datafile::TextReason> textReasons)
        : _dataset(dataset), _separator(separator), _model(dataset.source(), false, true, false),
          _textReasons(std::move(textReasons))
    {
        for (int column = 0; column < dataset.source().ColumnCount(); ++column)
            _variables.emplace_back(
                dataset.source().GetVariable(column),
                *_model.getMetaData().GetField(static_cast<std::size_t>(column)),
                dataset.file().Field(column).GetStorage() == CFField::Integer);
    }

    const std::string& dataModel() const { return _model.getDataModel(); }

    Json json(const std::string& name) const
    {
        Json json = {{"schema", kInfoSchema},
                     {"file", name},
                     {"cases", _dataset.file().CaseCount()},
                     {"encoding", _dataset.file().Encoding()}};
        if (_separator != ',')
            json["separator"] = separatorWord(_separator);
        if (const std::string weight = weightName(); !weight.empty())
            json["weight"] = weight;
        for (const std::string& split : splitNames())
            json["split"].push_back(split);
        for (const std::string& line : _dataset.file().Documents())
            json["documents"].push_back(utf8(line));
        json["variables"] = Json::array();
        for (const VariableFacts& variable : _variables)
            json["variables"].push_back(variable.json());
        for (const datafile::TextReason& reason : _textReasons)
            json["variables"][reason.column]["textBecauseOf"] =
                reason.line > 0 ? Json{{"value", reason.text}, {"line", reason.line}}
                                : Json{{"value", reason.text}, {"record", reason.record}};
        return json;
    }

    void printHead(const std::string& name) const
    {
        std::cout << name << ": "
                  << counted(static_cast<double>(_dataset.file().CaseCount()), "^1 case",
                             "^1 cases")
                  << ", "
                  << counted(static_cast<double>(_variables.size()), "^1 variable", "^1 variables")
                  << ", " << sentence("encoding ^1", {_dataset.file().Encoding()});
        if (_separator != ',')
            std::cout << ", " << sentence("separator ^1", {word(separatorWord(_separator))});
        std::cout << '\n';
        if (const std::string weight = weightName(); !weight.empty())
            std::cout << terminalText(sentence("weighted by ^1", {weight})) << '\n';
        std::string split;
        for (const std::string& variable : splitNames())
            split += (split.empty() ? "" : ", ") + variable;
        if (!split.empty())
            std::cout << terminalText(sentence("split by ^1", {split})) << '\n';
        for (const std::string& line : _dataset.file().Documents())
            for (const std::string& shown : terminalLines(utf8(line)))
                std::cout << "  " << shown << '\n';
    }

    void printTextReasons(const InputFile& input) const
    {
        for (const datafile::TextReason& reason : _textReasons) {
            const std::string hint = reasonHint(reason, input, word);
            std::cout << terminalText(reasonText(reason, word) + (hint.empty() ? "" : "; ") + hint)
                      << '\n';
        }
    }

    /// Leaves out columns that are empty for all variables.
    ResultTable table(const CellLanguage& language) const
    {
        ResultTable table;
        table.keyCount = 1;
        const auto add = [&](const char* name, const auto& fact, const char* key = "") {
            std::vector<std::string> texts;
            for (std::size_t i = 0; i < _variables.size(); ++i)
                texts.push_back(fact(i));
            const bool isNeeded = std::any_of(texts.begin(), texts.end(),
                                              [](const auto& text) { return !text.empty(); });
            if (!isNeeded)
                return;
            table.columns.push_back({.name = name, .key = key});
            table.rows.resize(texts.size());
            for (std::size_t i = 0; i < texts.size(); ++i)
                table.rows[i].push_back(texts[i].empty() ? std::nullopt : std::optional(texts[i]));
        };
        add("variable", [this](std::size_t i) { return name(i); });
        const Wording wording = language.wording;
        add("type", [&](std::size_t i) { return _variables[i].type(wording); });
        add(
            "level", [&](std::size_t i) { return wording(_variables[i].level()); },
            "measurement level");
        add("role", [&](std::size_t i) { return wording(_variables[i].role()); });
        add("label", [this](std::size_t i) { return _variables[i].label(); });
        add("missing", [&](std::size_t i) { return _variables[i].missing(language); });
        add("value labels", [&](std::size_t i) { return _variables[i].labels(language); });
        return table;
    }

private:
    std::string name(std::size_t place) const
    {
        return _model.getMetaData().GetField(place)->GetName();
    }
    std::string weightName() const
    {
        const int weight = _dataset.source().GetWeightVarIndex();
        return weight < 0 ? std::string() : name(static_cast<std::size_t>(weight));
    }
    std::vector<std::string> splitNames() const
    {
        const int count = _dataset.source().GetNSplitVars();
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            names.push_back(name(static_cast<std::size_t>(_dataset.source().GetSplitVarIndex(i))));
        return names;
    }

    const Dataset& _dataset;
    char _separator;
    HVDataModel _model;
    std::vector<datafile::TextReason> _textReasons;
    std::vector<VariableFacts> _variables;
};

} // namespace

void info(const InfoOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    checkLog(common.logFile);
    const TableLook look{options.format, textForm(options.text, options.format)};
    const InputFile input(options.input, FileOptions::Offered, watch);
    const DatasetFacts facts(*input.dataset(), input.separator(), input.textReasons());
    watch.check();
    if (!common.quiet)
        for (const std::string& doubt : input.doubts())
            printMessage("hvhost: warning: " + doubt);
    if (options.showDataModel)
        std::cout << facts.dataModel();
    else if (options.format == "json")
        std::cout << facts.json(options.input.path).dump(2) << '\n';
    else if (options.format == "csv")
        printTable(facts.table({}), look, std::cout);
    else {
        facts.printHead(options.input.path == kStandardStream ? word("standard input")
                                                              : options.input.path);
        printTable(inWords(facts.table({word, decimalSign()})), look, std::cout);
        facts.printTextReasons(input);
    }
}

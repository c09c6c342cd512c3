#include "data/HVDataModel.h"

#include <algorithm>

#include "MultiByte.h"
#include "ParserMessage.h"
#include "data/FieldOfVariable.h"
#include "support/Transcoding.h"

namespace {

constexpr const char* kCaseCountName = "$casecount";
constexpr const char* kCaseCountLabel = "Case Count";
/// The column number of the case count.
constexpr int kCaseCountColumn = -1;

} // namespace

/// Two sets of fields: all columns of the source, built once, and the columns of an analysis,
/// rebuilt by each update. Callers see the second set if it has fields.
struct HVINTEG_HIDDEN HVDataModel::Impl
{
    /// One column of an analysis.
    struct Choice
    {
        int column = -1; ///< negative: does not exist
        MeasurementLevel level = static_cast<MeasurementLevel>(-1);
    };

    const VEXA_DataSource* source = nullptr;
    bool weightRole = false;
    std::vector<int> splitVariables;
    bool splitRole = false;
    bool addCaseCount = false;
    // Both have no changeable state, so copies share them.
    std::shared_ptr<ParserMessage> messages = std::make_shared<ParserMessage>();
    std::shared_ptr<void> converter{VEXAMBConverterNew_A(nullptr), VEXAMBConverterDelete_A};
    CFMetaData dictionary;
    std::string dictionaryXml;
    CFMetaData analysis;
    std::string analysisXml;
    std::vector<int> analysisVariables;

    /// Builds the first set, with the case count last if requested.
    void CreateDictMetadata();
    /// A weight or split variable has that role if it is requested. If splits are, every other
    /// variable is an input. Otherwise the host's role counts.
    CFField::RoleType roleOfColumn(int column) const;
    void AppendDictField(CFMetaData& target, int column, MeasurementLevel level) const;
    MeasurementLevel levelOf(int column) const
    {
        return source->GetVariable(column).GetMeasurementLevel();
    }
    CFField caseCountField() const;
    bool isColumn(int column) const { return column >= 0 && column < source->ColumnCount(); }
    /// Builds the second set without the choices that are not columns. If none is a column, the set
    /// is empty.
    void update(const std::vector<Choice>& choices, bool withLevels);
    /// Negative if no column has the name.
    int columnOf(const std::string& name, bool fromUTF8) const;
};

CFField::RoleType HVDataModel::Impl::roleOfColumn(int column) const
{
    if (weightRole && column == source->GetWeightVarIndex())
        return CFField::FrequencyWeight;
    if (splitRole && !splitVariables.empty()) {
        const bool isSplit =
            std::find(splitVariables.begin(), splitVariables.end(), column) != splitVariables.end();
        return isSplit ? CFField::Split : CFField::Input;
    }
    return roleOf(source->GetVariable(column).GetRole());
}

void HVDataModel::Impl::AppendDictField(CFMetaData& target, int column,
                                        MeasurementLevel level) const
{
    target.AppendField(
        fieldOf(source->GetVariable(column), level, roleOfColumn(column), converter.get()));
}

CFField HVDataModel::Impl::caseCountField() const
{
    CFField field(kCaseCountName, CFField::Continuous, CFField::Real, CFField::RecordId);
    field.SetLabel(
        transcodeToUTF8(messages->GetTranslatedText(kCaseCountLabel).c_str(), converter.get()));
    return field;
}

void HVDataModel::Impl::CreateDictMetadata()
{
    for (int column = 0; column < source->ColumnCount(); ++column)
        AppendDictField(dictionary, column, levelOf(column));
    if (addCaseCount)
        dictionary.AppendField(caseCountField());
    dictionary.ExportXMLDoc(dictionaryXml);
}

int HVDataModel::Impl::columnOf(const std::string& name, bool fromUTF8) const
{
    if (name.empty())
        return -1;
    // The source stores names in the host's encoding.
    return source->FindVarIndex(fromUTF8 ? transcodeFromUTF8(name.c_str(), converter.get()) : name,
                                0);
}

void HVDataModel::Impl::update(const std::vector<Choice>& choices, bool withLevels)
{
    analysisVariables.clear();
    // Clear first: without a valid choice, callers see the first set.
    analysis = CFMetaData();
    analysisXml.clear();
    for (const Choice& choice : choices) {
        if (!isColumn(choice.column))
            continue;
        const bool asItIs = static_cast<int>(choice.level) < 0;
        if (withLevels)
            AppendDictField(analysis, choice.column,
                            asItIs ? levelOf(choice.column) : choice.level);
        else
            analysis.AppendField(*dictionary.GetField(static_cast<std::size_t>(choice.column)));
        analysisVariables.push_back(choice.column);
    }
    if (analysis.FieldCount() == 0)
        return;
    if (addCaseCount) {
        analysisVariables.push_back(kCaseCountColumn);
        analysis.AppendField(caseCountField());
    }
    analysis.ExportXMLDoc(analysisXml);
}

HVDataModel::HVDataModel(const VEXA_DataSource& source, bool addCaseCount, bool weightRole,
                         bool splitRole)
    : _impl(std::make_unique<Impl>())
{
    _impl->source = &source;
    _impl->weightRole = weightRole;
    for (int i = 0; i < source.GetNSplitVars(); ++i)
        _impl->splitVariables.push_back(source.GetSplitVarIndex(i));
    _impl->splitRole = splitRole;
    _impl->addCaseCount = addCaseCount;
    _impl->CreateDictMetadata();
}

HVDataModel::HVDataModel(const HVDataModel& other) : _impl(std::make_unique<Impl>(*other._impl)) {}

HVDataModel& HVDataModel::operator=(const HVDataModel& other)
{
    *_impl = *other._impl;
    return *this;
}

HVDataModel::~HVDataModel() = default;

void HVDataModel::UpdateAnalysMetadata(const std::vector<int>& variables)
{
    UpdateAnalysMetadata(variables, {});
}

void HVDataModel::UpdateAnalysMetadata(const std::vector<int>& variables,
                                       const std::vector<MeasurementLevel>& levels)
{
    std::vector<Impl::Choice> choices(variables.size());
    for (std::size_t i = 0; i < variables.size(); ++i) {
        choices[i].column = variables[i];
        if (i < levels.size())
            choices[i].level = levels[i];
    }
    _impl->update(choices, !levels.empty());
}

void HVDataModel::UpdateAnalysMetadata(const std::vector<std::string>& names, bool fromUTF8)
{
    UpdateAnalysMetadata(names, {}, fromUTF8);
}

void HVDataModel::UpdateAnalysMetadata(const std::vector<std::string>& names,
                                       const std::vector<MeasurementLevel>& levels, bool fromUTF8)
{
    std::vector<int> columns;
    columns.reserve(names.size());
    for (const std::string& name : names)
        columns.push_back(_impl->columnOf(name, fromUTF8));
    UpdateAnalysMetadata(columns, levels);
}

const CFMetaData& HVDataModel::getMetaData() const
{
    return _impl->analysis.FieldCount() > 0 ? _impl->analysis : _impl->dictionary;
}

const std::string& HVDataModel::getDataModel() const
{
    return _impl->analysisXml.empty() ? _impl->dictionaryXml : _impl->analysisXml;
}

const std::vector<int>& HVDataModel::getAnalysVars() const
{
    return _impl->analysisVariables;
}

const VEXA_DataSource& HVDataModel::getDataSource() const
{
    return *_impl->source;
}

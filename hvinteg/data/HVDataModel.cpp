#include "data/HVDataModel.h"

#include <algorithm>

#include "MultiByte.h"
#include "ParserMessage.h"
#include "data/FieldOfVariable.h"
#include "support/Transcoding.h"

namespace {

constexpr const char* kCaseCountName = "$casecount";
constexpr const char* kCaseCountLabel = "Case Count";
/// What stands for the case count among columns.
constexpr int kCaseCountColumn = -1;

} // namespace

/// Two sets of fields: all columns of the source, made once, and those that an analysis asked for,
/// made anew by each update. Callers see the second where it has any field.
struct HVINTEG_HIDDEN HVDataModel::Impl
{
    /// What was asked for at one place of the input.
    struct Choice
    {
        int column = -1; ///< negative: nothing that is there
        MeasurementLevel level = static_cast<MeasurementLevel>(-1);
    };

    const VEXA_DataSource* source = nullptr;
    bool weightRole = false;
    std::vector<int> splitVariables;
    bool splitRole = false;
    bool addCaseCount = false;
    // Both are without a state of their own, so that copies may share them.
    std::shared_ptr<ParserMessage> messages = std::make_shared<ParserMessage>();
    std::shared_ptr<void> converter{VEXAMBConverterNew_A(nullptr), VEXAMBConverterDelete_A};
    CFMetaData dictionary;
    std::string dictionaryXml;
    CFMetaData analysis;
    std::string analysisXml;
    std::vector<int> analysisVariables;

    /// The first set, with the case count behind all columns if it is wanted.
    void CreateDictMetadata();
    /// A weight or split variable has that role where it is wanted, and where splits are, every
    /// other one is an input; else the host's own role counts.
    CFField::RoleType roleOfColumn(int column) const;
    void AppendDictField(CFMetaData& target, int column, MeasurementLevel level) const;
    MeasurementLevel levelOf(int column) const
    {
        return source->GetVariable(column).GetMeasurementLevel();
    }
    CFField caseCountField() const;
    bool isColumn(int column) const { return column >= 0 && column < source->ColumnCount(); }
    /// The second set. Choices that are no columns are left out, and without any that is one the
    /// first set counts again.
    void update(const std::vector<Choice>& choices, bool withLevels);
    /// Negative for a name that no column has.
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
    // The source knows its variables in the host's encoding.
    return source->FindVarIndex(fromUTF8 ? transcodeFromUTF8(name.c_str(), converter.get()) : name,
                                0);
}

void HVDataModel::Impl::update(const std::vector<Choice>& choices, bool withLevels)
{
    analysisVariables.clear();
    // Also where nothing is asked for: callers then see the first set again.
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

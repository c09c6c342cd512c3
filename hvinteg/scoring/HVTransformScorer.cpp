#include "scoring/HVTransformScorer.h"

#include <algorithm>
#include <sstream>
#include <unordered_map>

#include "CFMetaData.h"
#include "CFUpperFuncImpl.h"
#include "IMCScoreComputer.h"
#include "IMCVariable.h"
#include "MCMV.h"
#include "MCMathFun.h"
#include "MCScorerFactory.h"
#include "MCSettings.h"
#include "MCVarList.h"
#include "MultiByte.h"
#include "RowDataIterator.h"
#include "ValueRecord.h"
#include "scoring/RowValue.h"

namespace {

/// A guess of the number of variables.
constexpr int kRecordCapacity = 2;

std::string nameOf(const IMCVariable& variable)
{
    std::string name;
    variable.GetName(name);
    return name;
}

bool isText(const IMCVariable& variable)
{
    return variable.GetValueType() == IMCVariable::kString;
}

std::unique_ptr<IMCScoreComputer> readModel(const std::string& text)
{
    MCScorerFactory factory;
    MCSettings settings;
    std::istringstream stream(text);
    return std::unique_ptr<IMCScoreComputer>(factory.CreateMCScoringObject(settings, stream));
}

} // namespace

struct HVINTEG_HIDDEN HVTransformScorer::Impl
{
    ~Impl() { VEXAMBConverterDelete_A(converter); }

    bool bindInputs();
    bool bindInput(const IMCVariable& variable);
    bool readOutputs();
    bool bindOutputs(const std::vector<std::string>& names, bool namesAreUTF8);
    void addOutput(int index);

    CFUpperFuncImpl upper;
    std::unique_ptr<CFMetaData> metaData;
    EmbeddedHV::RowDataIterator* iterator = nullptr;
    double missing = MCMV::Missing();
    std::vector<double> targetValues;
    std::unique_ptr<IMCScoreComputer> computer;
    ValueRecord inputRecord{kRecordCapacity};
    ValueRecord outputRecord{kRecordCapacity};
    std::vector<std::string> inputNames;
    std::vector<InputColumn> inputs;
    std::vector<std::string> outputNames;
    std::unordered_map<std::string, int> outputsByName;
    std::unordered_map<std::string, int> outputsByUpperName;
    std::vector<int> outputIndexes; ///< indexes of the selected results
    void* converter = VEXAMBConverterNew_A(nullptr);
};

/// Resolves the columns once, so that no row looks up names.
bool HVTransformScorer::Impl::bindInputs()
{
    MCVarList variables;
    if (computer->GetInputs(variables).IsError())
        return false;
    for (int i = 0; i < variables.Size(); ++i)
        if (!bindInput(*variables.GetVarAt(i)))
            return false;
    return true;
}

/// The metadata library compares names, with the host's rules for letters.
bool HVTransformScorer::Impl::bindInput(const IMCVariable& variable)
{
    const std::string name = nameOf(variable);
    const int column = metaData->GetFieldIndex(name);
    if (column < 0)
        return false;
    const bool isString = isText(variable);
    // Reject a contradictory model: it would read a number where its storage is a text.
    if (isString != (variable.GetStorage() == IMCVariable::kStoredString))
        return false;
    const auto* field = metaData->GetField(static_cast<std::size_t>(column));
    const InputColumn input{static_cast<unsigned long long>(column), variable.GetStorage(),
                            field->GetStorage()};
    // The model would misinterpret the row's bytes.
    if (!canRead(input))
        return false;
    inputRecord.AddValue(name, isString ? Value("") : Value(missing));
    inputNames.push_back(name);
    inputs.push_back(input);
    return true;
}

/// Returns false if the model has a text output.
bool HVTransformScorer::Impl::readOutputs()
{
    for (int i = 0; i < computer->GetOutputCount(); ++i) {
        const IMCVariable& variable = *computer->GetOutputAt(i);
        if (isText(variable))
            return false;
        outputNames.push_back(nameOf(variable));
        outputsByName[outputNames.back()] = i;
        outputsByUpperName[GetUpperVarName(outputNames.back())] = i;
    }
    return true;
}

/// The exact name is preferred, because two names may be equal in upper case. A name may occur
/// twice.
bool HVTransformScorer::Impl::bindOutputs(const std::vector<std::string>& names, bool namesAreUTF8)
{
    for (const std::string& given : names) {
        std::string name = given;
        if (!namesAreUTF8)
            VEXAMBGenericToU8(given.c_str(), name, converter);
        if (const auto exact = outputsByName.find(name); exact != outputsByName.end()) {
            outputIndexes.push_back(exact->second);
            continue;
        }
        const auto found = outputsByUpperName.find(GetUpperVarName(name));
        if (found == outputsByUpperName.end())
            return false;
        outputIndexes.push_back(found->second);
    }
    if (names.empty())
        for (int i = 0; i < computer->GetOutputCount(); ++i)
            outputIndexes.push_back(i);
    return true;
}

HVTransformScorer::HVTransformScorer() : _impl(std::make_shared<Impl>()) {}

HVTransformScorer::~HVTransformScorer() = default;

bool HVTransformScorer::PrepareScoring(EmbeddedHV::RowDataIterator* iterator,
                                       const std::string& model,
                                       const std::vector<std::string>& names, bool namesAreUTF8)
{
    if (iterator == nullptr || model.empty())
        return false;
    Impl& impl = *_impl;
    impl.computer = readModel(model);
    if (!impl.computer || impl.computer->GetModelType() != IMCScoreComputer::kTransformModel)
        return false;
    impl.iterator = iterator;
    impl.metaData = std::make_unique<CFMetaData>(iterator->getDataModel(), &impl.upper);
    if (!impl.bindInputs() || !impl.readOutputs() || !impl.bindOutputs(names, namesAreUTF8))
        return false;
    // If this fails, ScoreRecord fails too and reports it.
    impl.computer->PrepareOutput(impl.outputRecord);
    impl.targetValues.assign(impl.outputIndexes.size(), impl.missing);
    return true;
}

bool HVTransformScorer::ScoreRecord()
{
    Impl& impl = *_impl;
    if (!impl.computer || impl.iterator == nullptr)
        return false;
    for (std::size_t i = 0; i < impl.inputs.size(); ++i)
        readInput(*impl.iterator, impl.inputs[i], impl.missing,
                  impl.inputRecord[static_cast<int>(i)]);
    if (impl.computer->Compute(impl.inputRecord, impl.outputRecord, 0).IsError()) {
        // Clear the values, so that nobody uses those of the previous row.
        std::fill(impl.targetValues.begin(), impl.targetValues.end(), impl.missing);
        return false;
    }
    for (std::size_t j = 0; j < impl.targetValues.size(); ++j)
        impl.targetValues[j] = impl.outputRecord[impl.outputIndexes[j]];
    return true;
}

const std::vector<std::string>& HVTransformScorer::GetInputModelVarNames() const
{
    return _impl->inputNames;
}

const std::vector<std::string>& HVTransformScorer::GetOutputModelVarNames() const
{
    return _impl->outputNames;
}

const std::vector<double>& HVTransformScorer::GetTargetValues() const
{
    return _impl->targetValues;
}

bool HVTransformScorer::IsValidDouble(double value)
{
    return MCMathFun::IsValidDouble(value);
}

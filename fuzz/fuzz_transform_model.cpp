#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

#include "IMCScoreComputer.h"
#include "IMCVariable.h"
#include "MCMV.h"
#include "MCScorerFactory.h"
#include "MCSettings.h"
#include "MCVarList.h"
#include "ValueRecord.h"

namespace {

/// A rule that a model breaks is a finding.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

Value valueFor(const IMCVariable& variable, double number)
{
    if (variable.GetValueType() != IMCVariable::kString)
        return number;
    return std::to_string(number).c_str();
}

/// Whatever the model and the row are, a result is finite, missing, or not-a-number if it is
/// invalid.
void score(IMCScoreComputer& model, double number)
{
    MCVarList inputs;
    if (model.GetInputs(inputs).IsError())
        return;
    ValueRecord input(2);
    for (int i = 0; i < inputs.Size(); ++i)
        input.AddValue("", valueFor(*inputs.GetVarAt(i), number));
    ValueRecord output(2);
    model.PrepareOutput(output);
    require(output.Size() == model.GetOutputCount());
    if (model.Compute(input, output, 0).IsError())
        return;
    for (int i = 0; i < output.Size(); ++i)
        require(!std::isinf(output[i].GetNumber()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    MCSettings settings;
    settings.SetMaxExpressions(2000);
    MCScorerFactory factory;
    const std::unique_ptr<IMCScoreComputer> model(factory.CreateMCScoringObject(settings, stream));
    require((model == nullptr) == factory.GetStatus().IsError());
    if (!model)
        return 0;
    for (const double number : {0.0, 1.0, -2.5, 13550198400.0, 1e308, -1e-308, MCMV::Missing()})
        score(*model, number);
    return 0;
}

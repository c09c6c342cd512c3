#include "MCScorerFactory.h"

#include <exception>
#include <utility>

#include "MCSettings.h"
#include "model/OtherModel.h"
#include "model/TransformReader.h"

namespace {

MCScorerFactory::Maker& replacement()
{
    static MCScorerFactory::Maker maker;
    return maker;
}

std::unique_ptr<IMCScoreComputer> read(const MCSettings& settings, std::istream& model)
{
    const scoring::PmmlDocument document(model);
    const int type = scoring::modelTypeOf(document);
    if (type != IMCScoreComputer::kTransformModel)
        // The caller can ask for its type, which says more than a failure.
        return std::make_unique<scoring::OtherModel>(type);
    return scoring::readTransformModel(document, settings);
}

} // namespace

void MCScorerFactory::SetMaker(Maker maker)
{
    replacement() = std::move(maker);
}

IMCScoreComputer* MCScorerFactory::CreateMCScoringObject(MCSettings& settings, std::istream& model)
{
    _status = {};
    if (const Maker& maker = replacement())
        return maker(settings, model);
    try {
        return read(settings, model).release();
    } catch (const std::exception& fault) {
        _status = MCStatus::Error(fault.what());
        return nullptr;
    }
}

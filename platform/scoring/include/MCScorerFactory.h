#pragma once

#include <functional>
#include <istream>

#include "MCStatus.h"
#include "ScoringExport.h"

class IMCScoreComputer;
class MCSettings;

/// Makes computers from models.
///
///     MCScorerFactory factory;
///     MCSettings settings;
///     std::unique_ptr<IMCScoreComputer> computer(factory.CreateMCScoringObject(settings, stream));
///     if (!computer)
///         std::cerr << factory.GetStatus().GetMessage();
class SCORING_API MCScorerFactory
{
public:
    /// Takes over from the library's own reader, for models that it does not know and for tests.
    using Maker = std::function<IMCScoreComputer*(MCSettings&, std::istream&)>;
    /// An empty maker restores the library's own. Not synchronised: call it while nobody makes one.
    static void SetMaker(Maker maker);

    /// Reads a PMML document; the caller deletes the result. Null for one that is not valid, and
    /// for one that asks for something this library does not do: it never computes something else.
    IMCScoreComputer* CreateMCScoringObject(MCSettings& settings, std::istream& model);
    /// What was wrong with the last model.
    const MCStatus& GetStatus() const { return _status; }

private:
    MCStatus _status;
};

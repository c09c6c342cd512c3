#pragma once

#include <functional>
#include <istream>

#include "MCStatus.h"
#include "ScoringExport.h"

class IMCScoreComputer;
class MCSettings;

/// Makes computers from models. One thread at a time may use an object.
///
///     MCScorerFactory factory;
///     MCSettings settings;
///     std::unique_ptr<IMCScoreComputer> computer(factory.CreateMCScoringObject(settings, stream));
///     if (!computer)
///         std::cerr << factory.GetStatus().GetMessage();
class SCORING_API MCScorerFactory
{
public:
    /// A function that replaces the library's own reader, for other kinds of models and for tests.
    /// The caller of CreateMCScoringObject owns the result. What the function throws passes.
    using Maker = std::function<IMCScoreComputer*(MCSettings&, std::istream&)>;
    /// Sets the maker of the whole process. An empty maker restores the library's own reader. Not
    /// synchronised: no other thread may make a computer during the call.
    static void SetMaker(Maker maker);

    /// Reads a PMML document from `model`. The caller deletes the result. A model of another type
    /// gives a computer that reports its type and returns an error for every row. Returns null if
    /// the document is invalid or needs something that this library does not support; GetStatus
    /// then gives the reason.
    IMCScoreComputer* CreateMCScoringObject(MCSettings& settings, std::istream& model);
    /// The status of the last CreateMCScoringObject. The factory owns it; the next call changes it.
    const MCStatus& GetStatus() const { return _status; }

private:
    MCStatus _status;
};

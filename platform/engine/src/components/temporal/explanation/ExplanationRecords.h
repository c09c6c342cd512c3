#pragma once

#include <memory>
#include <string>
#include <vector>

#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/model/TcmModel.h"
#include "components/temporal/preparation/NamedSeries.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Takes the records that the component gets. One thread at a time.
class ExplanationRecords
{
public:
    virtual ~ExplanationRecords() = default;
    /// The SQL that gives the records of a SELECT in the form that take reads.
    virtual std::string statement(const std::string& select) const = 0;
    /// The next records, in their order. Throws JobError.
    virtual void take(duck::Chunk& chunk) = 0;
    /// The data; nothing is left then. Throws JobError.
    virtual SeriesTable finish() = 0;
};

/// For records with `fields`; `known` is the model's preparation, borrowed. They are those that
/// tsdp prepares, or those that rtsdp gives, which have the time, the dimensions and the metrics as
/// the data have them. The dimensions distinguish such records, and the n-th record of a
/// combination belongs to the n-th point of time. Throws JobError, with `component` before the
/// message, if the fields are neither.
std::unique_ptr<ExplanationRecords> explanationRecords(const Fields& fields, const TcmModel& model,
                                                       const NamedSeries& known,
                                                       const std::string& component,
                                                       const MessageSink& message);

} // namespace EmbeddedHV

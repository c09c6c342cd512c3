#include "components/temporal/ExplanationRecords.h"

#include "components/temporal/NamedRecords.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

/// Records as tsdp prepares them. Their points of time have numbers only.
class NumberedRecords : public ExplanationRecords
{
public:
    NumberedRecords(const Fields& fields, const std::string& component, const ModelFields& known)
        : _reader(fields, component), _points(known.points)
    {
    }

    std::string statement(const std::string& select) const override { return select; }
    void take(duck::Chunk& chunk) override { _reader.take(chunk); }
    ExplanationData finish() override { return {_reader.finish(), _points}; }

private:
    SeriesReader _reader;
    std::vector<std::string> _points;
};

} // namespace

std::unique_ptr<ExplanationRecords> explanationRecords(const Fields& fields, const TcmModel& model,
                                                       const ModelFields& known,
                                                       const std::string& component,
                                                       const MessageSink& message)
{
    if (findField(fields, kTimeIndexField))
        return std::make_unique<NumberedRecords>(fields, component, known);
    return std::make_unique<NamedRecords>(fields, model, known, component, message);
}

} // namespace EmbeddedHV

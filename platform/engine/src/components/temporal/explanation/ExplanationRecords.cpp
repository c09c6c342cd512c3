#include "components/temporal/explanation/ExplanationRecords.h"

#include "components/temporal/explanation/NamedRecords.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

/// Records as tsdp prepares them.
class NumberedRecords : public ExplanationRecords
{
public:
    NumberedRecords(const Fields& fields, const std::string& component) : _reader(fields, component)
    {
    }

    std::string statement(const std::string& select) const override { return select; }
    void take(duck::Chunk& chunk) override { _reader.take(chunk); }
    SeriesTable finish() override { return _reader.finish(); }

private:
    SeriesReader _reader;
};

} // namespace

std::unique_ptr<ExplanationRecords> explanationRecords(const Fields& fields, const TcmModel& model,
                                                       const NamedSeries& known,
                                                       const std::string& component,
                                                       const MessageSink& message)
{
    if (findField(fields, kTimeIndexField))
        return std::make_unique<NumberedRecords>(fields, component);
    return std::make_unique<NamedRecords>(fields, model, known, component, message);
}

} // namespace EmbeddedHV

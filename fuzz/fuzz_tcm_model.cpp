#include <cstddef>
#include <cstdint>
#include <string>

#include "InputParts.h"
#include "JobError.h"
#include "ScratchFolder.h"
#include "components/temporal/model/ModelDocument.h"
#include "components/temporal/model/ModelManifest.h"
#include "components/temporal/model/NetworkDocument.h"
#include "components/temporal/model/Preparation.h"
#include "components/temporal/preparation/NamedSeries.h"

/// Any texts as the documents of a model file: the model, the data preparation, the manifest. Each
/// is read or refused with an error, and a model that is read is written so that it reads back the
/// same.
namespace {

using namespace EmbeddedHV;

template <class Read>
void attempt(Read read)
{
    try {
        read();
    } catch (const JobError& error) {
        require(!std::string(error.what()).empty());
    }
}

void readModelText(const std::string& text)
{
    const TcmModel model = modelOfDocument(text, {"fuzz"});
    const std::string written = modelDocument(model);
    require(modelDocument(modelOfDocument(written, {"fuzz"})) == written);
    require(!networkDocument(model).empty());
}

void readPreparationText(const std::string& text)
{
    const Preparation preparation = preparationOf(text, {"fuzz"});
    require(preparation.document == text);
    require(!modelStatistics(preparation.fields).empty());
    (void)namedSeriesOf(text, {"fuzz"}, [](const std::string&, const FaultParts&) {});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> parts = partsOf(textOf(data, size), 3);
    attempt([&] { readModelText(parts[0]); });
    if (parts.size() > 1)
        attempt([&] { readPreparationText(parts[1]); });
    if (parts.size() > 2)
        attempt([&] { (void)manifestChecksums(parts[2], {"fuzz"}); });
    return 0;
}

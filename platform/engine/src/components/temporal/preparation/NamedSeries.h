#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "components/temporal/base/DocumentSource.h"
#include "components/temporal/preparation/DimensionValue.h"
#include "components/temporal/preparation/TimeAxis.h"

namespace EmbeddedHV {

/// What a preparation knows of its series and points of time, read back from its document.
struct NamedSeries
{
    struct Series
    {
        std::vector<int> codes; ///< of the values of the dimensions, from 1
        std::size_t metric = 0; ///< a place in `metrics`
    };

    TimeAxis axis;
    Fields dimensions;
    std::vector<DimensionValues> values; ///< of each dimension, by code from 1
    std::vector<std::string> metrics;
    std::map<std::string, Series> series; ///< by id
};

/// Reads the document "TSDPOutput.json". Throws JobError if it is not
/// one that tsdp writes.
NamedSeries namedSeriesOf(const std::string& document, const DocumentSource& source,
                          const MessageSink& message);

} // namespace EmbeddedHV

#pragma once

#include <string>
#include <vector>

#include "components/temporal/base/DocumentSource.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A series that the preparation made.
struct PreparedSeries
{
    std::string id;
    std::vector<std::string> name; ///< the values of the dimension fields, then the metric
};

/// What the training reads of the document of the data preparation.
struct Preparation
{
    std::string document; ///< as the preparation wrote it
    std::vector<PreparedSeries> series;
    /// The dimension fields and, last, the field of the metrics, with coded values.
    Fields nameFields;
    /// The fields of the model: dimension fields with coded values, the metrics as coded values of
    /// one field, and the metrics themselves.
    Fields fields;
};

/// Reads the document. Throws JobError if the document is not of
/// the form that tsdp writes.
Preparation preparationOf(std::string document, const DocumentSource& source);

/// The document StatXML.xml of a model with these fields.
std::string modelStatistics(const Fields& fields);

} // namespace EmbeddedHV

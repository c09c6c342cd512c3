#pragma once

#include <string>

#include "components/temporal/base/DocumentSource.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The bounds of a model that is read from a file.
inline constexpr std::int64_t kMostModelSeries = 100'000;
inline constexpr std::int64_t kMostModelLags = 1'000;
inline constexpr std::int64_t kMostModelPoints = 100'000'000;

/// The document TCMModel.json: the whole model. Every number reads back as the same double; one
/// that is not finite is null.
std::string modelDocument(const TcmModel& model);

/// The model of such a document. Throws JobError for anything that modelDocument does not write: a
/// series that does not exist or is listed twice, a lag or a point of time out of range, a number
/// that is not finite. `owner` begins every message.
TcmModel modelOfDocument(const std::string& document, const DocumentSource& source);

} // namespace EmbeddedHV

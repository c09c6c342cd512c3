#pragma once

#include "CFField.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Changes the metadata of a field as an entry of updateDataModel says. The storage changes first,
/// because the other settings have values of the new storage. Throws JobError for an invalid word
/// or value. Reports unknown settings to `message`.
void updateField(const Settings& entry, CFField& field, const MessageSink& message);

/// Reads geospatial properties from an object "Geo".
CFGeo geoOf(const Settings& settings, const MessageSink& message);

} // namespace EmbeddedHV

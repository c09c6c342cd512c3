#pragma once

#include "CFField.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Changes what is known of a field as an entry of updateDataModel says: storage first, since the
/// values of the other settings are read as values of the new storage. Throws JobError for a word
/// or a value that is wrong; settings that are not known are told to `message`.
void updateField(const Settings& entry, CFField& field, const MessageSink& message);

/// The geospatial properties that the object "Geo" of an entry holds.
CFGeo geoOf(const Settings& settings, const MessageSink& message);

} // namespace EmbeddedHV

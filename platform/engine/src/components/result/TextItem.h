#pragma once

#include <string>
#include <vector>

#include "CFDatum.h"
#include "CFField.h"
#include "steps/Settings.h"

/// The texts of a result document, see docs/result-document.md. Each is an object that states its
/// meaning, so that a reader can show it in its own language, with its own labels and formats.
namespace EmbeddedHV::text {

/// An English text. It is the key for a translation.
Json fixed(const std::string& english);
/// A text that is not translated.
Json plain(const std::string& text);
/// A field. A reader shows its label if it has one.
Json field(const std::string& name);
/// A number with its format.
Json number(double value, Json format);
/// A value of a field, on the scale of data models. An empty text is shown as `empty`.
Json value(const CFField& field, const CFDatum& datum, const std::string& empty);
/// Several items, joined without separators.
Json composite(std::vector<Json> items);

} // namespace EmbeddedHV::text

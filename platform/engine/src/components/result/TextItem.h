#pragma once

#include <string>
#include <vector>

#include "CFDatum.h"
#include "CFField.h"
#include "steps/Settings.h"

/// The texts of a result document, docs/result-document.md: each is an object that says what it
/// stands for, so that a reader shows it in its own language, with its own labels and formats.
namespace EmbeddedHV::text {

/// A text in English, which is the key under which a reader may have a translation.
Json fixed(const std::string& english);
/// A text that nobody translates.
Json plain(const std::string& text);
/// The field itself: its label where it has one.
Json field(const std::string& name);
Json number(double value, Json format);
/// A value of the field, on the scale of data models. An empty text is shown as `empty`.
Json value(const CFField& field, const CFDatum& datum, const std::string& empty);
/// The items one behind the other, with nothing between them.
Json composite(std::vector<Json> items);

} // namespace EmbeddedHV::text

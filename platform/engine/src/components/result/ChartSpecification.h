#pragma once

#include <string>

#include "CFField.h"
#include "steps/Settings.h"

/// Charts of a result document: Vega-Lite specifications that contain their data.
namespace EmbeddedHV::chart {

/// The name of the data column for the values of a field: the field's name, or `otherwise` for the
/// few names that Vega-Lite cannot refer to even with escapes.
std::string columnName(const std::string& fieldName, const std::string& otherwise);
/// A reference to a column, for encodings. Escapes dots and brackets, which would refer to nested
/// objects.
std::string columnReference(const std::string& column);
/// The label of the field, or its name.
const std::string& titleOf(const CFField& field);
/// The title of an axis. Vega-Lite writes it into an expression and escapes only quotes. So line
/// ends become blanks, and a backslash becomes a similar character.
std::string axisTitle(const std::string& title);
/// A specification without an encoding. `title` is a text or an object. `rows` is a list of
/// objects, one for each mark.
Json barSpecification(Json title, const std::string& description, Json rows);

} // namespace EmbeddedHV::chart

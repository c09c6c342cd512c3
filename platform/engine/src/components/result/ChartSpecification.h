#pragma once

#include <string>

#include "CFField.h"
#include "steps/Settings.h"

/// Charts of a result document: Vega-Lite specifications with their data inside.
namespace EmbeddedHV::chart {

/// The column of the data that holds values of a field: the field's name, or `otherwise` for the
/// few names that Vega-Lite cannot refer to, whatever the escapes.
std::string columnName(const std::string& fieldName, const std::string& otherwise);
/// A column as encodings refer to it: dots and brackets alone would lead into nested objects.
std::string columnReference(const std::string& column);
/// What people call the field.
const std::string& titleOf(const CFField& field);
/// A title of an axis. Vega-Lite writes it into an expression and marks nothing there but quotes,
/// so line ends become blanks, and a backslash a character that looks like one.
std::string axisTitle(const std::string& title);
/// A specification without encoding. `title` is a text or an object, `rows` are objects, one a
/// mark.
Json barSpecification(Json title, const std::string& description, Json rows);

} // namespace EmbeddedHV::chart

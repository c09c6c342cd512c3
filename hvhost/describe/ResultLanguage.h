#pragma once

#include <string>

#include <nlohmann/json.hpp>

/// The parts of a result document that the library shows without translation. The rest of a
/// table is translated by the host.

/// Whether the host's language differs from that of result documents, which is English.
bool isTranslated();

/// Translates the captions of all tables of a result, and the texts in their cells.
void translateTables(nlohmann::ordered_json& result);

/// Translates the titles of a chart's axes, except `own`, the title of the field that it shows.
/// `kind` and `own` become its description.
void translateChart(nlohmann::ordered_json& chart, const std::string& own, const std::string& kind);

#pragma once

#include <iosfwd>
#include <string>

#include "OutputTree.h"
#include "report/document/PageDocument.h"

/// The owner of the JSON that is written.
struct JsonOwner
{
    std::string title;
    std::string anchor;
    const OutputDocument& source;
};

/// Writes the members "1", "2" and so on of a document as tables and charts, and its data model,
/// member "0", folded.
void writeJson(std::ostream& out, const JsonOwner& owner, const PageJson& document);

/// Writes an interactive view in static form.
void writeView(std::ostream& out, const OutputView& view, const PageJson* document,
               const std::string& anchor);

/// Whether a part of a document can be drawn as a chart.
bool hasDrawing(const PageJson& value);

#pragma once

#include <iosfwd>
#include <string>

#include "OutputTree.h"
#include "report/document/PageDocument.h"

/// The input for drawing a chart; all borrowed.
struct ChartDrawing
{
    const PageJson& specification;
    std::string title;
    std::string anchor;
    const OutputDocument& source; ///< has the GeoJSON texts
};

/// Writes a chart that the page draws: title, description, a map or the definition for the drawing
/// script, and the data as tables, which are open until the chart is drawn.
void writeDrawing(std::ostream& out, const ChartDrawing& drawing);

/// Writes a chart of the output. If its specification cannot be drawn, writes a note and its
/// content.
void writeChart(std::ostream& out, const OutputChart& chart, const PageJson* document,
                const std::string& anchor);

/// Writes invalid JSON unchanged, with a note.
void writeUnread(std::ostream& out, const std::string& text);

/// The drawable specification of a chart document, or null.
const PageJson* drawableOf(const PageJson* document);

#pragma once

#include <iosfwd>
#include <string>

#include "OutputTree.h"
#include "page/PageDocument.h"

/// What the page needs of a chart to draw it; all of it is borrowed.
struct ChartDrawing
{
    const PageJson& specification;
    std::string title;
    std::string anchor;
    const OutputDocument& source; ///< of the GeoJSON texts
};

/// Writes a chart that the page draws: title, description, and either a map or the definition for
/// the script that draws it; and the data as tables, which are open until the chart is drawn.
void writeDrawing(std::ostream& out, const ChartDrawing& drawing);

/// Writes a chart of the output. One without a specification that can be drawn becomes a note and
/// its content.
void writeChart(std::ostream& out, const OutputChart& chart, const PageJson* document,
                const std::string& anchor);

/// Writes what was no JSON as it is, with a note.
void writeUnread(std::ostream& out, const std::string& text);

/// The specification of a chart document that can be drawn; null if there is none.
const PageJson* drawableOf(const PageJson* document);

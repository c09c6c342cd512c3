#include "report/maps/MapLegend.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "Translation.h"
#include "report/document/PageText.h"
#include "report/maps/MapBounds.h"
#include "report/maps/MapFrame.h"

namespace {

constexpr double kLargestRadius = 14 * kUnitsPerPixel;
constexpr double kSmallestRadius = 1.5 * kUnitsPerPixel;

/// A sample of a look in the map's units, so that a hatch looks the same.
void writeSample(std::ostream& out, const std::string& look, const LegendForm& form)
{
    out << "<svg class=\"swatch\" width=\"18\" height=\"12\" viewBox=\"0 0 180 120\" "
           "aria-hidden=\"true\"><g "
        << look << ">";
    if (form.isOfPoints)
        out << "<circle cx=\"90\" cy=\"60\" r=\"50\"/>";
    else if (form.hatch.empty())
        out << "<rect width=\"180\" height=\"120\"/>";
    else
        out << "<rect width=\"180\" height=\"120\" fill=\"url(#" << form.hatch << ")\"/>";
    out << "</g></svg>";
}

void open(std::ostream& out, const MapChannel& channel)
{
    out << "<div class=\"legend\">\n<p>" << isolated(channel.title) << "</p>\n<ul>\n";
}

void close(std::ostream& out)
{
    out << "</ul>\n</div>\n";
}

} // namespace

std::string lookOf(const MapClass& each)
{
    return each.colour.empty() ? "class=\"" + each.look + "\""
                               : "color=\"" + escaped(each.colour) + "\"";
}

void writeColours(std::ostream& out, const MapChannel& channel, const MapClasses& classes,
                  const LegendForm& form, bool hasNone)
{
    open(out, channel);
    for (const MapClass& each : classes.classes()) {
        out << "<li>";
        writeSample(out, lookOf(each), {form.isOfPoints, {}});
        out << " " << isolated(shortened(each.label)) << "</li>\n";
    }
    if (hasNone) {
        out << "<li>";
        writeSample(out, lookOf({{}, kNoneLook}), form);
        out << " " << escaped(translate("No data")) << "</li>\n";
    }
    close(out);
}

double radiusOf(double size, double largest)
{
    const double share = largest > 0 ? std::clamp(size / largest, 0.0, 1.0) : 0;
    return std::max(kLargestRadius * std::sqrt(share), kSmallestRadius);
}

void writeSizes(std::ostream& out, const MapChannel& channel, double largest)
{
    open(out, channel);
    const std::vector<double> bounds = roundBounds(0, largest);
    for (const double size : {bounds[1], bounds[bounds.size() / 2], largest})
        out << "<li><svg class=\"swatch\" width=\"29\" height=\"29\" viewBox=\"0 0 290 290\" "
               "aria-hidden=\"true\"><g class=\""
            << kDotLook << "\"><circle cx=\"145\" cy=\"145\" r=\""
            << std::lround(radiusOf(size, largest)) << "\"/></g></svg> " << roundedNumber(size)
            << "</li>\n";
    close(out);
}

#include "report/charts/NetworkMarkup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <set>

#include "Translation.h"
#include "report/charts/NetworkLayout.h"
#include "report/document/JsonTables.h"
#include "report/document/PageText.h"

namespace {

/// The largest network that is still legible on a page.
constexpr std::size_t kMostNodes = 300;
constexpr std::size_t kMostEdges = 600;
/// Larger networks have smaller names.
constexpr std::size_t kFewNodes = 60;
constexpr double kRadius = 7;
constexpr double kNameGap = 12; ///< from the circle to the base line of the name
constexpr std::size_t kLongestName = 24;
constexpr double kArrow = 8;
constexpr double kWidestBow = 40;

/// A length in a drawing, with a tenth of a pixel.
std::string length(double value)
{
    const long tenths = std::lround(value * 10);
    const std::string whole = std::to_string(std::abs(tenths) / 10);
    const std::string rest = tenths % 10 == 0 ? "" : "." + std::to_string(std::abs(tenths) % 10);
    return (tenths < 0 ? "-" : "") + whole + rest;
}

std::string point(double x, double y)
{
    return length(x) + " " + length(y);
}

/// The number of characters of a UTF-8 text.
double lettersOf(const std::string& text)
{
    return static_cast<double>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

/// Keeps the strongest edges, the nodes that they connect, and nodes with a kind.
bool cut(NetworkSpec& spec)
{
    if (spec.nodes.size() <= kMostNodes && spec.edges.size() <= kMostEdges)
        return false;
    std::set<std::size_t> kept;
    std::vector<NetworkEdge> edges;
    for (const NetworkEdge& edge : spec.edges) {
        const std::size_t added =
            (kept.contains(edge.from) ? 0 : 1) + (kept.contains(edge.to) ? 0 : 1);
        if (edges.size() == kMostEdges || kept.size() + added > kMostNodes)
            continue;
        kept.insert({edge.from, edge.to});
        edges.push_back(edge);
    }
    for (std::size_t at = 0; at < spec.nodes.size() && kept.size() < kMostNodes; ++at)
        kept.insert(at);
    std::vector<std::size_t> places(spec.nodes.size());
    std::vector<NetworkNode> nodes;
    for (const std::size_t at : kept) {
        places[at] = nodes.size();
        nodes.push_back(std::move(spec.nodes[at]));
    }
    for (NetworkEdge& edge : edges) {
        edge.from = places[edge.from];
        edge.to = places[edge.to];
    }
    spec.nodes = std::move(nodes);
    spec.edges = std::move(edges);
    return true;
}

/// Writes one network.
class NetworkWriter
{
public:
    NetworkWriter(std::ostream& out, const NetworkSpec& spec, const MapName& name)
        : _out(out), _spec(spec), _name(name), _layout(layOutNetwork(spec))
    {
        for (const NetworkEdge& edge : spec.edges)
            _strongest = std::max(_strongest, edge.strength);
    }

    void write()
    {
        _out << "<svg width=\"" << length(_layout.width) << "\" height=\"" << length(_layout.height)
             << "\" viewBox=\"0 0 " << point(_layout.width, _layout.height)
             << "\" role=\"graphics-document\" aria-label=\"" << escaped(shortened(_name.title));
        if (!_name.description.empty())
            _out << ". " << escaped(shortened(_name.description));
        _out << "\"" << (_spec.nodes.size() > kFewNodes ? " class=\"many\"" : "") << ">\n";
        // The strongest edges are drawn last, above the others.
        for (auto edge = _spec.edges.rbegin(); edge != _spec.edges.rend(); ++edge)
            writeEdge(*edge);
        for (std::size_t at = 0; at < _spec.nodes.size(); ++at)
            writeNode(at);
        // Above the names, which would hide the heads of short arrows.
        for (auto edge = _spec.edges.rbegin(); edge != _spec.edges.rend(); ++edge)
            writeHead(*edge);
        _out << "</svg>\n";
    }

private:
    /// The line of an edge, an arc, so that an edge and its reverse do not overlap, and its head.
    struct Arrow
    {
        NetworkPoint start;
        NetworkPoint bend;
        NetworkPoint end; ///< of the line, the middle of the head's back
        NetworkPoint tip;
        NetworkPoint way; ///< the direction at the tip, a unit vector
        double width = 0; ///< of the line
        double head = 0;  ///< the length of the head
    };

    Arrow arrowOf(const NetworkEdge& edge) const
    {
        const NetworkPoint& from = _layout.points[edge.from];
        const NetworkPoint& to = _layout.points[edge.to];
        const double x = to.x - from.x;
        const double y = to.y - from.y;
        const double distance = std::max(std::hypot(x, y), 1.0);
        const double bow = std::min(0.12, kWidestBow / distance);
        Arrow arrow;
        arrow.start = {from.x + x / distance * kRadius, from.y + y / distance * kRadius};
        arrow.bend = {(from.x + to.x) / 2 - y * bow, (from.y + to.y) / 2 + x * bow};
        arrow.width = widthOf(edge);
        arrow.head = kArrow + arrow.width;
        const double toBend = std::max(std::hypot(to.x - arrow.bend.x, to.y - arrow.bend.y), 1.0);
        arrow.way = {(to.x - arrow.bend.x) / toBend, (to.y - arrow.bend.y) / toBend};
        const double gap = gapAt(edge.to, arrow.way, distance);
        arrow.tip = {to.x - arrow.way.x * gap, to.y - arrow.way.y * gap};
        arrow.end = {arrow.tip.x - arrow.way.x * arrow.head,
                     arrow.tip.y - arrow.way.y * arrow.head};
        return arrow;
    }

    void writeEdge(const NetworkEdge& edge)
    {
        const Arrow arrow = arrowOf(edge);
        _out << "<g class=\"" << (edge.isNegative ? "edge negative" : "edge")
             << "\" role=\"graphics-symbol\"><title>" << escaped(_spec.nodes[edge.from].name)
             << " → " << escaped(_spec.nodes[edge.to].name) << escaped(edge.details)
             << "</title><path stroke-width=\"" << length(arrow.width) << "\" d=\"M"
             << point(arrow.start.x, arrow.start.y) << "Q" << point(arrow.bend.x, arrow.bend.y)
             << " " << point(arrow.end.x, arrow.end.y) << "\"/></g>\n";
    }

    void writeHead(const NetworkEdge& edge)
    {
        const Arrow arrow = arrowOf(edge);
        const double half = arrow.head / 2;
        _out << "<path class=\"" << (edge.isNegative ? "head negative" : "head") << "\" d=\"M"
             << point(arrow.tip.x, arrow.tip.y) << "L"
             << point(arrow.end.x - arrow.way.y * half, arrow.end.y + arrow.way.x * half) << "L"
             << point(arrow.end.x + arrow.way.y * half, arrow.end.y - arrow.way.x * half)
             << "Z\"/>\n";
    }

    /// The distance from the centre of a node at which an arrow ends that comes along the unit
    /// vector `way`: outside the circle, and outside the name below it, which would hide the head.
    double gapAt(std::size_t node, const NetworkPoint& way, double distance) const
    {
        constexpr double kCharacter = 6.8; ///< the mean width in the page's fonts
        constexpr double kSmallCharacter = 5.1;
        constexpr double kDescent = 4;
        const double atCircle = kRadius + 1;
        // Only an arrow from below meets the name.
        if (way.y >= 0)
            return atCircle;
        const double character = _spec.nodes.size() > kFewNodes ? kSmallCharacter : kCharacter;
        const double half = lettersOf(shownNameOf(_spec.nodes[node])) * character / 2;
        const double bottom = kRadius + kNameGap + kDescent;
        const double toSide = half / std::max(std::abs(way.x), 1e-9);
        const double toTop = kRadius / -way.y;
        const double gap = std::min(bottom / -way.y, toSide);
        // Passes beside the name, or is too short to end below it.
        return toSide < toTop || gap > 0.7 * distance ? atCircle : std::max(gap, atCircle);
    }

    double widthOf(const NetworkEdge& edge) const
    {
        constexpr double kThin = 0.8;
        constexpr double kThick = 4;
        return kThin + (_strongest > 0 ? edge.strength / _strongest * (kThick - kThin) : 0);
    }

    void writeNode(std::size_t at)
    {
        const NetworkNode& node = _spec.nodes[at];
        const NetworkPoint& middle = _layout.points[at];
        _out << "<g class=\"node " << lookOf(node) << "\" role=\"graphics-symbol\"><title>"
             << escaped(node.name) << "</title><circle cx=\"" << length(middle.x) << "\" cy=\""
             << length(middle.y) << "\" r=\"" << length(kRadius) << "\"/><text x=\""
             << length(middle.x) << "\" y=\"" << length(middle.y + kRadius + kNameGap) << "\">"
             << escaped(shownNameOf(node)) << "</text></g>\n";
    }

    static std::string shownNameOf(const NetworkNode& node)
    {
        return shortened(node.name, kLongestName);
    }

    static const char* lookOf(const NetworkNode& node)
    {
        return node.kind == "focus" ? "focus" : node.kind == "target" ? "target" : "other";
    }

    std::ostream& _out;
    const NetworkSpec& _spec;
    const MapName& _name;
    NetworkLayout _layout;
    double _strongest = 0;
};

void writeNetworkNote(std::ostream& out, const std::string& text)
{
    out << "<p class=\"message level1\" role=\"note\">" << escaped(text) << "</p>\n";
}

} // namespace

void writeNetwork(std::ostream& out, NetworkSpec spec, const MapName& name)
{
    const PageJson& rows = *spec.rows;
    const bool isCut = cut(spec);
    out << "<div class=\"network\">\n";
    NetworkWriter(out, spec, name).write();
    out << "</div>\n";
    if (std::ranges::any_of(spec.edges, &NetworkEdge::isNegative))
        writeNetworkNote(out, translate("Dashed arrows: a rise is followed by a fall."));
    if (isCut)
        writeNetworkNote(out, translate("Only the strongest arrows are drawn; the table has all."));
    if (rows.empty())
        return;
    out << "<details open><summary>" << escaped(translate("Data")) << "</summary>\n";
    writeArray(out, name.title, rows);
    out << "</details>\n";
}

#include "report/maps/MapPath.h"

#include <cmath>

#include "report/maps/MapFrame.h"

namespace {

constexpr long kNearest = static_cast<long>(kUnitsPerPixel / 2);
constexpr long kSpeck = static_cast<long>(3 * kUnitsPerPixel); // minus its border

/// A point in whole units.
struct Dot
{
    long x;
    long y;
};

Dot dotOf(const MapPoint& point)
{
    return {std::lround(point.x), std::lround(point.y)};
}

std::vector<Dot> thinned(const MapLine& line)
{
    std::vector<Dot> dots;
    for (const MapPoint& point : line) {
        const Dot dot = dotOf(point);
        if (dots.empty() || std::hypot(dot.x - dots.back().x, dot.y - dots.back().y) >= kNearest)
            dots.push_back(dot);
    }
    return dots;
}

/// A minus sign separates two numbers like a blank.
void append(std::string& path, long number, char last)
{
    const bool isApart = number < 0 || (last >= 'A' && last <= 'z');
    path += (isApart ? "" : " ") + std::to_string(number);
}

void move(std::string& path, const Dot& dot)
{
    path += 'M';
    append(path, dot.x, 'M');
    append(path, dot.y, '0');
}

/// Writes relative steps, which need fewer digits than positions.
void trace(std::string& path, const std::vector<Dot>& dots)
{
    move(path, dots.front());
    for (std::size_t at = 1; at < dots.size(); ++at) {
        if (at == 1)
            path += 'l';
        append(path, dots[at].x - dots[at - 1].x, path.back());
        append(path, dots[at].y - dots[at - 1].y, path.back());
    }
}

std::string speckAt(const MapPoint& point)
{
    std::string path;
    const Dot dot = dotOf(point);
    move(path, {dot.x - kSpeck / 2, dot.y - kSpeck / 2});
    const std::string side = std::to_string(kSpeck);
    return path + "h" + side + "v" + side + "h-" + side + "z";
}

} // namespace

std::string areaPath(const std::vector<MapLine>& rings)
{
    std::string path;
    for (const MapLine& ring : rings)
        if (const std::vector<Dot> dots = thinned(ring); dots.size() > 2) {
            trace(path, dots);
            path += 'z';
        }
    return path.empty() && !rings.empty() ? speckAt(rings.front().front()) : path;
}

std::string linePath(const std::vector<MapLine>& lines)
{
    std::string path;
    for (const MapLine& line : lines)
        if (const std::vector<Dot> dots = thinned(line); dots.size() > 1)
            trace(path, dots);
    return path;
}

std::string spotPath(const MapLine& spots)
{
    std::string path;
    for (const MapPoint& spot : spots) {
        move(path, dotOf(spot));
        path += "h0";
    }
    return path;
}

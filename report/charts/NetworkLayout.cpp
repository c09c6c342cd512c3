#include "report/charts/NetworkLayout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>

namespace {

constexpr double kWidth = 960;
constexpr double kMargin = 60; ///< space for half of a name
constexpr double kLeastHeight = 340;
/// Space for a node with its name.
constexpr double kAreaOfNode = 5400;
constexpr double kRowHeight = 46;
constexpr int kRounds = 400;

/// The algorithm of Fruchterman and Reingold, "Graph drawing by force-directed placement",
/// Software: Practice and Experience 21, 1991, with a force towards the centre that keeps separate
/// parts of the network together. The initial positions are on a spiral, with the most connected
/// nodes inside.
class ForceLayout
{
public:
    explicit ForceLayout(const NetworkSpec& spec)
        : _spec(spec), _forces(spec.nodes.size()),
          _height(std::max(kLeastHeight, kAreaOfNode * static_cast<double>(spec.nodes.size()) /
                                             (kWidth - 2 * kMargin))),
          _distance(0.8 * std::sqrt((kWidth - 2 * kMargin) * _height /
                                    static_cast<double>(spec.nodes.size())))
    {
        placeOnSpiral();
    }

    NetworkLayout run()
    {
        for (int round = 0; round < kRounds; ++round) {
            pushApart();
            pullTogether();
            move(_distance * (1 - static_cast<double>(round) / kRounds));
        }
        fitIn();
        return {std::move(_points), kWidth, _height + 2 * kMargin};
    }

private:
    void placeOnSpiral()
    {
        std::vector<std::size_t> edges(_spec.nodes.size());
        for (const NetworkEdge& edge : _spec.edges) {
            ++edges[edge.from];
            ++edges[edge.to];
        }
        std::vector<std::size_t> order(_spec.nodes.size());
        std::iota(order.begin(), order.end(), 0);
        std::ranges::stable_sort(order, std::greater(), [&](std::size_t at) { return edges[at]; });
        _points.resize(order.size());
        const double turn = std::numbers::pi * (3 - std::sqrt(5.0));
        for (std::size_t place = 0; place < order.size(); ++place) {
            const double radius = _distance * 0.6 * std::sqrt(static_cast<double>(place));
            const double angle = turn * static_cast<double>(place);
            _points[order[place]] = {radius * std::cos(angle), radius * std::sin(angle)};
        }
    }

    void pushApart()
    {
        const double square = _distance * _distance;
        for (std::size_t one = 0; one < _points.size(); ++one) {
            NetworkPoint& force = _forces[one];
            for (std::size_t other = 0; other < one; ++other) {
                const double x = _points[one].x - _points[other].x;
                const double y = _points[one].y - _points[other].y;
                const double push = square / std::max(x * x + y * y, 1.0);
                force.x += x * push;
                force.y += y * push;
                _forces[other].x -= x * push;
                _forces[other].y -= y * push;
            }
        }
    }

    void pullTogether()
    {
        for (const NetworkEdge& edge : _spec.edges) {
            const double x = _points[edge.to].x - _points[edge.from].x;
            const double y = _points[edge.to].y - _points[edge.from].y;
            const double pull = std::hypot(x, y) / _distance;
            _forces[edge.from].x += x * pull;
            _forces[edge.from].y += y * pull;
            _forces[edge.to].x -= x * pull;
            _forces[edge.to].y -= y * pull;
        }
        // The drawing is wide, so the vertical force towards the centre is stronger.
        const double slope = kWidth / _height;
        for (std::size_t at = 0; at < _points.size(); ++at) {
            _forces[at].x -= _points[at].x * 0.6;
            _forces[at].y -= _points[at].y * 0.6 * slope;
        }
    }

    void move(double farthest)
    {
        for (std::size_t at = 0; at < _points.size(); ++at) {
            NetworkPoint& force = _forces[at];
            const double length = std::hypot(force.x, force.y);
            const double share = length > farthest ? farthest / length : 1;
            _points[at].x += force.x * share;
            _points[at].y += force.y * share;
            force = {};
        }
    }

    void fitIn()
    {
        const auto scale = [this](double NetworkPoint::*axis, double size) {
            const auto [least, most] = std::ranges::minmax(
                _points, {}, [axis](const NetworkPoint& point) { return point.*axis; });
            const double first = least.*axis;
            const double span = most.*axis - first;
            for (NetworkPoint& point : _points)
                point.*axis = kMargin + (span > 0 ? (point.*axis - first) / span * size : size / 2);
        };
        scale(&NetworkPoint::x, kWidth - 2 * kMargin);
        scale(&NetworkPoint::y, _height);
    }

    const NetworkSpec& _spec;
    std::vector<NetworkPoint> _points;
    std::vector<NetworkPoint> _forces;
    double _height;
    double _distance; ///< ideal distance of connected nodes
};

/// Columns from the lowest level to the highest. In a column each node is near the mean position of
/// its neighbours, by the method of barycentres of Sugiyama, Tagawa and Toda, "Methods for visual
/// understanding of hierarchical system structures", IEEE Transactions on Systems, Man, and
/// Cybernetics 11, 1981.
class LevelLayout
{
public:
    explicit LevelLayout(const NetworkSpec& spec)
        : _spec(spec), _neighbours(spec.nodes.size()), _rows(spec.nodes.size())
    {
        for (std::size_t at = 0; at < spec.nodes.size(); ++at)
            _columns[spec.nodes[at].level].push_back(at);
        for (const NetworkEdge& edge : spec.edges) {
            _neighbours[edge.from].push_back(edge.to);
            _neighbours[edge.to].push_back(edge.from);
        }
        for (const auto& [level, nodes] : _columns)
            number(nodes);
    }

    NetworkLayout run()
    {
        constexpr int kSweeps = 8;
        for (int sweep = 0; sweep < kSweeps; ++sweep)
            for (auto& [level, nodes] : _columns) {
                std::ranges::stable_sort(nodes, {}, [this](std::size_t at) { return wish(at); });
                number(nodes);
            }
        return place();
    }

private:
    /// Rows are counted from the middle, so that short columns are centred.
    void number(const std::vector<std::size_t>& nodes)
    {
        const double middle = (static_cast<double>(nodes.size()) - 1) / 2;
        for (std::size_t row = 0; row < nodes.size(); ++row)
            _rows[nodes[row]] = static_cast<double>(row) - middle;
    }

    double wish(std::size_t at) const
    {
        const std::vector<std::size_t>& others = _neighbours[at];
        if (others.empty())
            return _rows[at];
        double sum = 0;
        for (const std::size_t other : others)
            sum += _rows[other];
        return sum / static_cast<double>(others.size());
    }

    NetworkLayout place() const
    {
        std::size_t longest = 0;
        for (const auto& [level, nodes] : _columns)
            longest = std::max(longest, nodes.size());
        NetworkLayout layout;
        layout.width = kWidth;
        layout.height =
            std::max(kLeastHeight / 2, kRowHeight * static_cast<double>(longest)) + kMargin;
        layout.points.resize(_spec.nodes.size());
        const double steps = std::max<double>(static_cast<double>(_columns.size()) - 1, 1);
        double column = _columns.size() == 1 ? 0.5 : 0;
        for (const auto& [level, nodes] : _columns) {
            for (const std::size_t at : nodes)
                layout.points[at] = {kMargin + column / steps * (kWidth - 2 * kMargin),
                                     layout.height / 2 + _rows[at] * kRowHeight};
            ++column;
        }
        return layout;
    }

    const NetworkSpec& _spec;
    std::map<int, std::vector<std::size_t>> _columns;
    std::vector<std::vector<std::size_t>> _neighbours;
    std::vector<double> _rows;
};

} // namespace

NetworkLayout layOutNetwork(const NetworkSpec& spec)
{
    return spec.isByLevels ? LevelLayout(spec).run() : ForceLayout(spec).run();
}

#include "components/temporal/model/TcmModel.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

const SeriesEquation* find(const std::vector<SeriesEquation>& equations, std::size_t series)
{
    const auto found = std::lower_bound(equations.begin(), equations.end(), series,
                                        [](const SeriesEquation& equation, std::size_t wanted) {
                                            return equation.series < wanted;
                                        });
    return found != equations.end() && found->series == series ? &*found : nullptr;
}

} // namespace

std::string shownName(const ModelSeries& series)
{
    std::string name;
    for (const std::string& part : series.name)
        name += (name.empty() ? "" : ", ") + part;
    return "\"" + (name.empty() ? series.id : name) + "\"";
}

std::optional<std::size_t> TcmModel::placeOf(const std::string& id) const
{
    const auto found = std::find_if(series.begin(), series.end(),
                                    [&](const ModelSeries& known) { return known.id == id; });
    if (found == series.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - series.begin());
}

const SeriesEquation* TcmModel::equationOf(std::size_t place) const
{
    return find(equations, place);
}

const SeriesEquation* TcmModel::autoregressionOf(std::size_t place) const
{
    return find(autoregressions, place);
}

} // namespace EmbeddedHV

#include "components/descriptives/settings/PercentSettings.h"

#include <charconv>
#include <iterator>
#include <set>
#include <string_view>

#include "steps/SettingWords.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kCustom = "computeCustomPercentiles";
constexpr double kUsual[] = {1, 5, 10, 25, 50, 75, 90, 95, 99};
/// Each percentile is a column of the tables.
constexpr std::size_t kMostPercents = 1000;

enum Accuracy : int
{
    NoneNamed,
    Exact
};

/// Percentiles are always exact. So "none" requests the same as "exact".
const char* WordOf(Accuracy accuracy)
{
    switch (accuracy) {
    case NoneNamed:
        return "none";
    case Exact:
        return "exact";
    default:
        return nullptr;
    }
}

class PercentReader
{
public:
    explicit PercentReader(const Settings& settings) : _settings(settings) {}

    void add(double percent)
    {
        if (!(percent >= 0 && percent <= 100))
            _settings.refuse(kCustom, "contains a number that is not from 0 to 100");
        _percents.insert(percent);
        if (_percents.size() > kMostPercents)
            _settings.refuse(kCustom,
                             "has more than " + std::to_string(kMostPercents) + " percents");
    }

    void take(const Json& value)
    {
        if (value.is_boolean()) {
            if (value.get<bool>())
                _percents.insert(std::begin(kUsual), std::end(kUsual));
        } else if (value.is_string()) {
            addText(value.get_ref<const std::string&>());
        } else if (value.is_array()) {
            for (const Json& percent : value)
                percent.is_number() ? add(percent.get<double>()) : refuse();
        } else {
            refuse();
        }
    }

    std::set<double>& percents() { return _percents; }

private:
    [[noreturn]] void refuse() const
    {
        _settings.refuse(kCustom, "is not true or false, a list of percents, or a text with "
                                  "percents between commas");
    }

    void addText(std::string_view text)
    {
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(',', begin), text.size());
            addPercent(text.substr(begin, end - begin));
            begin = end + 1;
        }
    }

    void addPercent(std::string_view text)
    {
        while (text.starts_with(' '))
            text.remove_prefix(1);
        while (text.ends_with(' '))
            text.remove_suffix(1);
        double percent = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), percent);
        if (error != std::errc() || end != text.data() + text.size())
            refuse();
        add(percent);
    }

    const Settings& _settings;
    std::set<double> _percents;
};

} // namespace

std::vector<double> percentsOf(const StepCall& call, const Settings& settings)
{
    PercentReader reader(settings);
    if (settings.has(kCustom))
        reader.take(call.configuration[kCustom]);
    if (settings.flag("computeAllPercentiles").value_or(false))
        for (int percent = 1; percent < 100; ++percent)
            reader.percents().insert(percent);
    wordSetting(settings, "customPercentilesAccuracy", NoneNamed);
    return {reader.percents().begin(), reader.percents().end()};
}

} // namespace EmbeddedHV

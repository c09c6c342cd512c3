#include "support/HVStatDisplay.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "HostValueText.h"
#include "MultiByte.h"
#include "VexaCases.h"

namespace HVStatDisplay {
namespace {

constexpr long long kLineView = 1;

/// Shows a line in the front end's view of lines.
void show(const std::string& line)
{
    TN_ToFront(kLineView, line);
}

/// A short form for developers; a missing value is a word.
std::string textOf(double value)
{
    if (value == kSystemMissing)
        return "miss";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

std::string textOf(int value)
{
    return std::to_string(value);
}

std::string textOf(bool value)
{
    return value ? "true" : "false";
}

/// In quotation marks, which make blanks at the ends visible.
std::string textOf(const std::string& value)
{
    return '"' + value + '"';
}

std::string textOf(const std::pair<const int, int>& value)
{
    return "(" + std::to_string(value.first) + "," + std::to_string(value.second) + ")";
}

// Shows a title and the elements of `list` in one line.
template <typename List>
void showList(const std::string& title, const List& list)
{
    std::string line = title;
    for (const auto& element : list)
        line += " " + textOf(element);
    show(list.empty() ? line + " <none>" : line);
}

// The text of a value in the format, without trailing blanks.
std::string formatted(const OBS* value, const VEXA_Format& format)
{
    std::vector<char> text(std::size_t{format.width} + 1, '\0');
    ToString(value, format, text.data());
    text[format.width] = '\0';
    VEXAMBstrtrim_A(text.data());
    return text.data();
}

template <typename Obs>
void showValues(const std::string& title, const std::vector<Obs*>& values,
                const VEXA_Format& format)
{
    show(title);
    if (values.empty())
        show("No values are specified.");
    for (const OBS* value : values)
        DisplayObs("Value in dictionary:", value, format);
}

} // namespace

// Titles are passed by value: the signatures are part of the exported interface.
// NOLINTBEGIN(performance-unnecessary-value-param)

void DisplayB(TN_Character title, bool value)
{
    show(title + " = " + textOf(value));
}

void DisplayC(TN_Character title, CatVarEncValue value)
{
    const char* meaning = " = unrecognized";
    if (value == kCatVarMissing)
        meaning = " = missing value for a categorical variable";
    else if (value == kCatVarMinimum)
        meaning = " = minimum categorical variable value";
    show(title + meaning);
}

void DisplayD(TN_Character title, double value)
{
    show(title + " = " + textOf(value));
}

void DisplayI(TN_Character title, int value)
{
    show(title + " = " + textOf(value));
}

void DisplayS(TN_Character title, const std::string& value)
{
    show(title + " = " + value);
}

void DisplayT(TN_Character title, unsigned long value)
{
    show(title + " = " + std::to_string(value));
}

void DisplayBV(TN_Character title, const std::vector<bool>& values)
{
    std::string line = title;
    for (const bool value : values)
        line += " " + textOf(value);
    show(values.empty() ? line + " <none>" : line);
}

void DisplayDV(TN_Character title, const std::vector<double>& values)
{
    showList(title, values);
}

void DisplayNL(TN_Character title, const std::vector<double>& values)
{
    showList(title, values);
}

void DisplayIV(TN_Character title, const std::vector<int>& values)
{
    showList(title, values);
}

void DisplayVL(TN_Character title, const std::vector<int>& values)
{
    showList(title, values);
}

void DisplaySL(TN_Character title, const std::vector<std::string>& values)
{
    showList(title, values);
}

void DisplaySV(TN_Character title, const std::vector<std::string>& values)
{
    showList(title, values);
}

void DisplayVNL(TN_Character title, const std::vector<VexaVarName>& names)
{
    showList(title, names);
}

void DisplayIIM(TN_Character title, const std::map<int, int>& values)
{
    showList(title, values);
}

void DisplayVIM(TN_Character title, const std::map<int, int>& values)
{
    showList(title, values);
}

void DisplayVCL(TN_Character title, const std::vector<int>& variables,
                const std::vector<bool>& categorical)
{
    std::string line = title;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const bool isCategorical = i < categorical.size() && categorical[i];
        line += " " + textOf(variables[i]) + (isCategorical ? "(cat)" : "(cont)");
    }
    show(variables.empty() ? line + " <none>" : line);
}

void DisplayObs(TN_Character title, const OBS* value, const VEXA_Format& format)
{
    if (value)
        DisplayS(std::move(title), formatted(value, format));
}

void DisplayObsVec(TN_Character title, const std::vector<OBS*>& values, const VEXA_Format& format)
{
    showValues(title, values, format);
}

void DisplayObsVec(TN_Character title, const std::vector<const OBS*>& values,
                   const VEXA_Format& format)
{
    showValues(title, values, format);
}

void DisplayObsVecMapD(TN_Character title, const ObsVecMap& values,
                       const std::vector<VEXA_Format>& formats)
{
    show(title);
    for (const auto& [key, number] : values.Sort(formats)) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < key.size() && i < formats.size(); ++i)
            texts.push_back(formatted(key[i].data(), formats[i]));
        DisplaySL("Map key (list of strings):", texts);
        DisplayD("Map value", number);
    }
}

void DisplaySLDM(TN_Character title, const std::map<std::vector<std::string>, double>& values)
{
    show(title);
    for (const auto& [key, number] : values) {
        DisplaySL("Map's String List:", key);
        DisplayD("Map's double", number);
    }
}

void DisplaySVV(TN_Character title, const std::vector<std::vector<std::string>>& values)
{
    show(title);
    for (std::size_t i = 0; i < values.size(); ++i)
        DisplaySV("vec[" + std::to_string(i) + "]", values[i]);
}

void DisplayIntVecDVecMap(TN_Character title,
                          const std::map<std::vector<int>, std::vector<double>>& values)
{
    show(title);
    for (const auto& [key, numbers] : values) {
        DisplayIV("Map key", key);
        DisplayDV("Map value", numbers);
    }
}

void DisplayIntVecIntMap(TN_Character title, const std::map<std::vector<int>, int>& values)
{
    show(title);
    for (const auto& [key, number] : values) {
        DisplayIV("Map key", key);
        DisplayI("Map value", number);
    }
}

void DisplayText(const long& channel, const std::string& line)
{
    TN_ToFront(channel, line);
}

// NOLINTEND(performance-unnecessary-value-param)

} // namespace HVStatDisplay

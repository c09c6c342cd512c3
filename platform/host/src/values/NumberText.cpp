#include "values/NumberText.h"

#include <algorithm>
#include <cmath>

#include "values/Decimal.h"

namespace {

constexpr std::size_t kGroup = 3;

std::string grouped(std::string whole, char sign)
{
    if (sign != 0)
        for (std::size_t at = whole.size(); at > kGroup;) {
            at -= kGroup;
            whole.insert(at, 1, sign);
        }
    return whole;
}

std::string decorated(const Decimal& number, const std::string& amount, const NumberStyle& style)
{
    const bool isNegative = number.isNegative() && !number.isZero();
    std::string text = isNegative ? "-" : "";
    text.append(style.prefix).append(amount).append(style.suffix);
    return text;
}

std::string fixedText(const Decimal& exact, const NumberStyle& style, int decimals)
{
    const Decimal number = exact.rounded(decimals);
    std::string fraction = number.fraction(decimals);
    if (style.dropsZeros)
        fraction.erase(fraction.find_last_not_of('0') + 1);
    std::string amount = grouped(number.whole(), style.groupSign);
    if (!fraction.empty())
        amount += style.decimalSign + fraction;
    return decorated(number, amount, style);
}

std::string scientificText(const Decimal& exact, const NumberStyle& style, int significant)
{
    const Decimal number = exact.roundedTo(significant);
    std::string amount = number.digits().substr(0, 1);
    if (number.count() > 1 && significant > 1)
        amount += style.decimalSign + number.digits().substr(1);
    const std::string power = std::to_string(std::abs(number.exponent()));
    amount += number.exponent() < 0 ? "E-" : "E+";
    return decorated(number, amount + (power.size() < 2 ? "0" : "") + power, style);
}

std::string wordText(double value, std::size_t width)
{
    const std::string word = std::isnan(value) ? "NaN" : value > 0 ? "Inf" : "-Inf";
    return word.size() <= width ? word : std::string(width, '*');
}

} // namespace

std::string numberText(double value, const NumberStyle& style, int decimals, std::size_t width)
{
    if (!std::isfinite(value))
        return wordText(value, width);
    const Decimal number(value);
    // Omit decimals before the magnitude; show asterisks before a number is cut.
    for (int kept = std::min(decimals, static_cast<int>(width)); kept >= 0; --kept)
        if (std::string text = fixedText(number, style, kept); text.size() <= width)
            return text;
    for (int kept = number.count(); kept > 0; --kept)
        if (std::string text = scientificText(number, style, kept); text.size() <= width)
            return text;
    return std::string(width, '*');
}

#include "text/NameCase.h"

#include <algorithm>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "base/AsciiText.h"
#include "text/CodePage.h"

std::u16string foldedName(const std::string& name)
{
    std::u16string units;
    hostCodePage()->toUtf16(name, units);
    // Folding makes a text at most three times as long.
    std::u16string folded(units.size() * 3 + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strFoldCase(folded.data(), static_cast<int32_t>(folded.size()), units.data(),
                      static_cast<int32_t>(units.size()), U_FOLD_CASE_DEFAULT, &status);
    folded.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return folded;
}

WantedName::WantedName(const std::string& name)
    : _name(name), _folded(foldedName(name)), _isAscii(base::isAscii(name))
{
}

bool WantedName::is(const std::string& other) const
{
    // A byte is only known to be a letter in ASCII; elsewhere it may be half a character.
    if (!_isAscii || !base::isAscii(other))
        return other == _name || foldedName(other) == _folded;
    return std::equal(
        _name.begin(), _name.end(), other.begin(), other.end(),
        [](char left, char right) { return base::lowerCase(left) == base::lowerCase(right); });
}

#include "text/NameCase.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "text/CodePage.h"

std::u16string foldedName(const std::string& name)
{
    std::u16string units;
    hostCodePage()->toUtf16(name, units);
    // Folding may lengthen a text, three times at the most.
    std::u16string folded(units.size() * 3 + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strFoldCase(folded.data(), static_cast<int32_t>(folded.size()), units.data(),
                      static_cast<int32_t>(units.size()), U_FOLD_CASE_DEFAULT, &status);
    folded.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return folded;
}

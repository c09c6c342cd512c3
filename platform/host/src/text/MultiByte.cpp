#include "MultiByte.h"

#include <cstring>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "text/CodePage.h"
#include "text/KeptStrings.h"

namespace {

/// The object behind a converter handle.
struct Converter
{
    std::shared_ptr<CodePage> page;
};

std::shared_ptr<CodePage> pageOf(void* converter)
{
    return converter ? static_cast<Converter*>(converter)->page : hostCodePage();
}

std::string_view viewOf(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

std::u16string firstUnits(const char* text, std::size_t length)
{
    std::u16string units;
    hostCodePage()->toUtf16(viewOf(text).substr(0, length), units);
    return units;
}

// Whether every byte with this value is a complete character, so that bytes can be tested one by
// one: always in a single-byte code page, for ASCII in UTF-8.
bool standsAlone(const CodePage& page, char character)
{
    return page.isSingleByte() || (page.isUtf8() && static_cast<unsigned char>(character) < 0x80);
}

} // namespace

const std::string& VEXAMBDefaultCodePage()
{
    return keepString(hostCodePage()->name());
}

bool SetDefaultCodePage(const std::string& name)
{
    return setHostCodePage(name);
}

bool qUTF8mode()
{
    return hostCodePage()->isUtf8();
}

void* VEXAMBConverterNew_A(const char* codePage)
{
    std::shared_ptr<CodePage> page = codePage ? CodePage::open(codePage) : hostCodePage();
    if (!page)
        return nullptr;
    // Owned by the handle until VEXAMBConverterDelete_A.
    return std::make_unique<Converter>(Converter{std::move(page)}).release();
}

void VEXAMBConverterDelete_A(void* converter)
{
    const std::unique_ptr<Converter> owned(static_cast<Converter*>(converter));
}

int VEXAMBGenericToU8(const char* text, std::string& result, void* converter)
{
    return pageOf(converter)->toUtf8(viewOf(text), result) ? 0 : 1;
}

int VEXAMBU8ToGeneric(const char* text, std::string& result, void* converter)
{
    return pageOf(converter)->fromUtf8(viewOf(text), result) ? 0 : 1;
}

int VEXAMBstrnccmp_A(const char* first, const char* second, std::size_t length)
{
    const std::u16string left = firstUnits(first, length);
    const std::u16string right = firstUnits(second, length);
    UErrorCode error = U_ZERO_ERROR;
    return u_strCaseCompare(left.data(), static_cast<std::int32_t>(left.size()), right.data(),
                            static_cast<std::int32_t>(right.size()), U_FOLD_CASE_DEFAULT, &error);
}

const char* VEXAMBstrchr_A(const char* text, char character)
{
    if (!text)
        return nullptr;
    const std::shared_ptr<CodePage> page = hostCodePage();
    if (character == '\0' || standsAlone(*page, character))
        return std::strchr(text, character);
    const char* found = nullptr;
    page->eachCharacter(text, [&](std::size_t offset, std::size_t length) {
        if (length == 1 && text[offset] == character)
            found = text + offset;
        return !found;
    });
    return found;
}

void VEXAMBStringReplaceChar_A(std::string& text, char from, char to)
{
    const std::shared_ptr<CodePage> page = hostCodePage();
    std::string replaced = text;
    const auto replace = [&](std::size_t offset, std::size_t length) {
        if (length == 1 && text[offset] == from)
            replaced[offset] = to;
        return true;
    };
    if (standsAlone(*page, from))
        for (std::size_t i = 0; i < text.size(); ++i)
            replace(i, 1);
    else
        page->eachCharacter(text, replace);
    text = std::move(replaced);
}

void VEXAMBstrtrim_A(char* text)
{
    if (!text)
        return;
    // In a code page that contains ASCII, a blank is never the second byte of a character.
    std::size_t length = std::strlen(text);
    while (length > 0 && text[length - 1] == ' ')
        --length;
    text[length] = '\0';
}

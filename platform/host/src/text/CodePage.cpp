#include "text/CodePage.h"

#include <cstdint>
#include <limits>
#include <mutex>

#include <unicode/ucnv.h>

#include "base/AsciiText.h"
#include "text/Utf16.h"

namespace {

struct ConverterCloser
{
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using ConverterHandle = std::unique_ptr<UConverter, ConverterCloser>;

constexpr std::size_t kMaxLength = std::numeric_limits<std::int32_t>::max() / 8;

// ICU substitutes silently; these callbacks record it and continue.
void noteUnreadable(const void* context, UConverterToUnicodeArgs* arguments, const char* bytes,
                    std::int32_t length, UConverterCallbackReason reason, UErrorCode* error)
{
    if (reason <= UCNV_IRREGULAR)
        *const_cast<bool*>(static_cast<const bool*>(context)) = true;
    UCNV_TO_U_CALLBACK_SUBSTITUTE(nullptr, arguments, bytes, length, reason, error);
}

void noteUnwritable(const void* context, UConverterFromUnicodeArgs* arguments, const UChar* units,
                    std::int32_t length, UChar32 character, UConverterCallbackReason reason,
                    UErrorCode* error)
{
    if (reason <= UCNV_IRREGULAR)
        *const_cast<bool*>(static_cast<const bool*>(context)) = true;
    UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, arguments, units, length, character, reason, error);
}

// Whether texts of the code page have no NUL inside a character and no shift states.
bool isPlainBytes(UConverter* converter)
{
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_MBCS:
    case UCNV_UTF8:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
        return ucnv_getMinCharSize(converter) == 1;
    default:
        return false;
    }
}

/// The name that other programs use, if there is one.
std::string preferredName(UConverter* converter)
{
    UErrorCode error = U_ZERO_ERROR;
    const char* own = ucnv_getName(converter, &error);
    for (const char* standard : {"MIME", "IANA"}) {
        error = U_ZERO_ERROR;
        if (const char* name = ucnv_getStandardName(own, standard, &error))
            return name;
    }
    return own;
}

} // namespace

struct CodePage::Impl
{
    explicit Impl(ConverterHandle handle);
    void toUnits(std::string_view text, std::u16string& result);
    void toBytes(std::u16string_view units, std::string& result);
    /// Determined by a test, because ICU does not provide it.
    bool findsAscii();

    std::mutex mutex; // the converter has state during a call
    ConverterHandle converter;
    bool lossy = false;
    std::string name;
    bool utf8 = false;
    bool singleByte = false;
    bool ascii = false;
};

CodePage::Impl::Impl(ConverterHandle handle) : converter(std::move(handle))
{
    UConverter* raw = converter.get();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(raw, noteUnreadable, &lossy, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(raw, noteUnwritable, &lossy, nullptr, nullptr, &error);
    ucnv_setSubstString(raw, u"?", 1, &error);
    name = preferredName(raw);
    utf8 = ucnv_getType(raw) == UCNV_UTF8;
    singleByte = ucnv_getMaxCharSize(raw) == 1;
    ascii = findsAscii();
}

bool CodePage::Impl::findsAscii()
{
    for (char c = ' '; c <= '~'; ++c) {
        std::u16string units;
        toUnits(std::string_view(&c, 1), units);
        if (units.size() != 1 || units[0] != static_cast<char16_t>(c))
            return false;
    }
    return true;
}

void CodePage::Impl::toUnits(std::string_view text, std::u16string& result)
{
    // Two units per byte are enough for almost any code page; otherwise the second round allocates
    // more.
    result.resize(text.size() * 2 + 1);
    for (int round = 0; round < 2; ++round) {
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length =
            ucnv_toUChars(converter.get(), result.data(), static_cast<std::int32_t>(result.size()),
                          text.data(), static_cast<std::int32_t>(text.size()), &error);
        result.resize(static_cast<std::size_t>(length));
        if (error != U_BUFFER_OVERFLOW_ERROR)
            return;
    }
}

void CodePage::Impl::toBytes(std::u16string_view units, std::string& result)
{
    const auto longest = static_cast<std::size_t>(ucnv_getMaxCharSize(converter.get()));
    result.resize(units.size() * longest + 1);
    for (int round = 0; round < 2; ++round) {
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length = ucnv_fromUChars(
            converter.get(), result.data(), static_cast<std::int32_t>(result.size()), units.data(),
            static_cast<std::int32_t>(units.size()), &error);
        result.resize(static_cast<std::size_t>(length));
        if (error != U_BUFFER_OVERFLOW_ERROR)
            return;
    }
}

CodePage::CodePage(std::unique_ptr<Impl> impl) : _impl(std::move(impl)) {}
CodePage::~CodePage() = default;

std::shared_ptr<CodePage> CodePage::open(const std::string& name)
{
    // ICU takes an empty name for the platform's default.
    if (name.empty())
        return nullptr;
    UErrorCode error = U_ZERO_ERROR;
    ConverterHandle converter(ucnv_open(name.c_str(), &error));
    if (U_FAILURE(error) || !isPlainBytes(converter.get()))
        return nullptr;
    // The constructor is private, so make_shared cannot be used.
    return std::shared_ptr<CodePage>(new CodePage(std::make_unique<Impl>(std::move(converter))));
}

bool CodePage::isKnown(const std::string& name)
{
    UErrorCode error = U_ZERO_ERROR;
    const ConverterHandle converter(ucnv_open(name.c_str(), &error));
    return !name.empty() && U_SUCCESS(error);
}

const std::string& CodePage::name() const
{
    return _impl->name;
}

bool CodePage::isUtf8() const
{
    return _impl->utf8;
}

bool CodePage::holdsAscii() const
{
    return _impl->ascii;
}

bool CodePage::isSingleByte() const
{
    return _impl->singleByte;
}

bool CodePage::toUtf16(std::string_view text, std::u16string& result) const
{
    if (_impl->utf8)
        return utf8ToUtf16(text, result);
    result.clear();
    if (text.size() > kMaxLength)
        return false;
    const std::lock_guard lock(_impl->mutex);
    _impl->lossy = false;
    _impl->toUnits(text, result);
    return !_impl->lossy;
}

bool CodePage::toUtf8(std::string_view text, std::string& result) const
{
    if (_impl->ascii && base::isAscii(text)) {
        result = text;
        return true;
    }
    std::u16string units;
    const bool read = toUtf16(text, units);
    return utf16ToUtf8(units, result) && read;
}

bool CodePage::fromUtf8(std::string_view text, std::string& result) const
{
    if (_impl->ascii && base::isAscii(text)) {
        result = text;
        return true;
    }
    std::u16string units;
    const bool read = utf8ToUtf16(text, units);
    if (_impl->utf8)
        return utf16ToUtf8(units, result) && read;
    result.clear();
    if (units.size() > kMaxLength)
        return false;
    const std::lock_guard lock(_impl->mutex);
    _impl->lossy = false;
    _impl->toBytes(units, result);
    return read && !_impl->lossy;
}

void CodePage::eachCharacter(std::string_view text,
                             const std::function<bool(std::size_t, std::size_t)>& visit) const
{
    const std::lock_guard lock(_impl->mutex);
    // An interrupted walk leaves the converter in the middle of a text.
    ucnv_resetToUnicode(_impl->converter.get());
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end) {
        const char* const begin = at;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_getNextUChar(_impl->converter.get(), &at, end, &error);
        // A character that maps to two code points returns the second without reading.
        if (at == begin && U_SUCCESS(error))
            continue;
        // An incomplete sequence at the end is one character.
        if (U_FAILURE(error))
            at = end;
        if (!visit(static_cast<std::size_t>(begin - text.data()),
                   static_cast<std::size_t>(at - begin)))
            return;
    }
}

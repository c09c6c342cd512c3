#pragma once

#include <cstddef>
#include <string>

#include "HostExport.h"

/// The host's encodings. Texts of the host are in its code page: UTF-8, unless VEXA_CODEPAGE or the
/// host program sets another.

/// Name of the host's code page: the MIME or IANA name, or otherwise ICU's. The reference stays
/// valid.
HOST_API const std::string& VEXAMBDefaultCodePage();
/// Sets the host's code page. Returns false, and changes nothing, for an unknown name and for a
/// code page that does not contain ASCII.
HOST_API bool SetDefaultCodePage(const std::string& name);
/// Whether the host's code page is UTF-8. Any thread.
HOST_API bool qUTF8mode();

/// Creates a converter between a code page and UTF-8; null means the host's present code page.
/// Returns null for an unknown code page. The caller deletes it with VEXAMBConverterDelete_A, on
/// any thread.
HOST_API void* VEXAMBConverterNew_A(const char* codePage);
/// Deletes a converter. Ignores null.
HOST_API void VEXAMBConverterDelete_A(void* converter);
/// Converts a text to UTF-8; a null converter means the host's code page. Returns non-zero if
/// something could not be converted; it becomes U+FFFD. A null text gives an empty result.
HOST_API int VEXAMBGenericToU8(const char* text, std::string& result, void* converter);
/// Converts a text from UTF-8; a null converter means the host's code page. Returns non-zero if
/// something could not be converted; it becomes "?". A null text gives an empty result.
HOST_API int VEXAMBU8ToGeneric(const char* text, std::string& result, void* converter);

/// Compares at most `length` bytes of two texts in the host's code page and ignores letter case.
/// Returns a number below, at or above 0.
HOST_API int VEXAMBstrnccmp_A(const char* first, const char* second, std::size_t length);
/// Finds a single-byte character in a text of the host's code page, in which a byte may be the
/// second half of a character. Returns null if it does not occur.
HOST_API const char* VEXAMBstrchr_A(const char* text, char character);
/// Replaces every occurrence of a single-byte character.
HOST_API void VEXAMBStringReplaceChar_A(std::string& text, char from, char to);
/// Removes trailing blanks in place.
HOST_API void VEXAMBstrtrim_A(char* text);

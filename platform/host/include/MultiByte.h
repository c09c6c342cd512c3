#pragma once

#include <cstddef>
#include <string>

#include "HostExport.h"

/// The host's encodings. Texts of the host are in its code page, UTF-8 unless VEXA_CODEPAGE or the
/// host program says otherwise.

/// The name of the host's code page, as ICU knows it.
HOST_API const std::string& VEXAMBDefaultCodePage();
HOST_API void SetDefaultCodePage(const std::string& name);
/// Whether the host's code page is UTF-8.
HOST_API bool qUTF8mode();

/// A converter between a code page and UTF-8; 0 stands for the host's own. Null if there is none.
HOST_API void* VEXAMBConverterNew_A(const char* codePage);
HOST_API void VEXAMBConverterDelete_A(void* converter);
/// Convert a text; a null converter stands for the host's code page. What cannot be converted
/// becomes a substitute; the result is then non-zero.
HOST_API int VEXAMBGenericToU8(const char* text, std::string& result, void* converter);
HOST_API int VEXAMBU8ToGeneric(const char* text, std::string& result, void* converter);

/// Aware of the host's code page: compares at most `length` bytes without regard to letter case;
/// finds a single-byte character; replaces every occurrence of one; cuts trailing blanks in place.
HOST_API int VEXAMBstrnccmp_A(const char* first, const char* second, std::size_t length);
HOST_API const char* VEXAMBstrchr_A(const char* text, char character);
HOST_API void VEXAMBStringReplaceChar_A(std::string& text, char from, char to);
HOST_API void VEXAMBstrtrim_A(char* text);

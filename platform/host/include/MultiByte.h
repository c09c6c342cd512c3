#pragma once

#include <cstddef>
#include <string>

#include "HostExport.h"

/// The host's encodings. Texts of the host are in its code page, UTF-8 unless VEXA_CODEPAGE or the
/// host program says otherwise.

/// The name of the host's code page: the MIME or IANA name where there is one, else the one that
/// ICU gives it. The reference stays good for the process.
HOST_API const std::string& VEXAMBDefaultCodePage();
/// False, and no change, for a name that is not known and for a code page in which ASCII texts are
/// not what they are in ASCII.
HOST_API bool SetDefaultCodePage(const std::string& name);
/// Whether the host's code page is UTF-8.
HOST_API bool qUTF8mode();

/// A converter between a code page and UTF-8; 0 stands for the host's own, as it is at this moment.
/// Null if there is none. The caller hands it to VEXAMBConverterDelete_A in the end; any thread.
HOST_API void* VEXAMBConverterNew_A(const char* codePage);
HOST_API void VEXAMBConverterDelete_A(void* converter);
/// Convert a text; a null converter stands for the host's code page. What cannot be converted
/// becomes a substitute, U+FFFD or "?"; the result is then non-zero. A null text is an empty one.
HOST_API int VEXAMBGenericToU8(const char* text, std::string& result, void* converter);
HOST_API int VEXAMBU8ToGeneric(const char* text, std::string& result, void* converter);

/// Aware of the host's code page, in which a byte may be the second half of a character: compares
/// at most `length` bytes of each text without regard to letter case, below, at or above 0; finds a
/// single-byte character; replaces every occurrence of one; cuts trailing blanks in place.
HOST_API int VEXAMBstrnccmp_A(const char* first, const char* second, std::size_t length);
HOST_API const char* VEXAMBstrchr_A(const char* text, char character);
HOST_API void VEXAMBStringReplaceChar_A(std::string& text, char from, char to);
HOST_API void VEXAMBstrtrim_A(char* text);

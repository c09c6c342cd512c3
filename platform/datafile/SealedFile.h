#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace datafile {

/// A sealed file cannot be opened, or content cannot be sealed.
class SealedFileError : public std::runtime_error
{
public:
    /// The reason. It determines what a user can do.
    enum class Kind
    {
        WrongPassword, ///< or the first chunk was changed
        Damaged,       ///< truncated, or a later chunk was changed
        NotSealed,
        System ///< an error of the operating system, or no memory
    };
    SealedFileError(Kind kind, const std::string& text, int code = 0)
        : std::runtime_error(text), _kind(kind), _code(code)
    {
    }
    Kind kind() const { return _kind; }
    /// The errno of the operating system, or 0.
    int code() const { return _code; }

private:
    Kind _kind;
    int _code;
};

/// Called for every chunk. Its exceptions end the work and are passed on.
using SealedFileStep = std::function<void()>;

/// Whether the file starts like a sealed one. False if it cannot be read.
bool isSealed(const std::string& path);

/// Encrypts the rest of `source` into `target`. The key is derived from the password by Argon2id
/// with a salt of this file. The content is a chain of authenticated chunks, so that a changed,
/// missing or moved chunk is detected. Throws SealedFileError.
void sealFile(int source, int target, const std::string& password, const SealedFileStep& step = {});

/// Decrypts a sealed file. After an exception the content of `target` is invalid. Throws
/// SealedFileError.
void openSealedFile(int source, int target, const std::string& password,
                    const SealedFileStep& step = {});

} // namespace datafile

#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace datafile {

/// A sealed file that cannot be opened, or content that cannot be sealed.
class SealedFileError : public std::runtime_error
{
public:
    /// Why a sealed file cannot be had: what a user can do about it differs.
    enum class Kind
    {
        WrongPassword, ///< or a file that was changed in its first chunk
        Damaged,       ///< cut short or changed later on
        NotSealed,
        System ///< the operating system or the memory is at fault
    };
    SealedFileError(Kind kind, const std::string& text, int code = 0)
        : std::runtime_error(text), _kind(kind), _code(code)
    {
    }
    Kind kind() const { return _kind; }
    /// What the operating system said, as errno; 0 if it did not.
    int code() const { return _code; }

private:
    Kind _kind;
    int _code;
};

/// Called for every chunk; an exception that it throws ends the work and passes.
using SealedFileStep = std::function<void()>;

/// Whether the file begins like a sealed one. False if it cannot be read.
bool isSealed(const std::string& path);

/// Seals what `source` holds from its present position on into `target`. The key comes from the
/// password by Argon2id with a salt of the file's own; the content is a chain of authenticated
/// chunks, so that no chunk can be changed, dropped or moved unseen. Throws SealedFileError.
void sealFile(int source, int target, const std::string& password, const SealedFileStep& step = {});

/// The reverse. What `target` holds after an exception is not to be used. Throws SealedFileError.
void openSealedFile(int source, int target, const std::string& password,
                    const SealedFileStep& step = {});

} // namespace datafile

#include "data/Utf8Copy.h"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <string_view>
#include <utility>

#include "FileServices.h"
#include "base/FileDescriptor.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"

namespace {

constexpr std::size_t kUtf8Block = std::size_t{256} * 1024;

/// Copies the file to UTF-8, in a file without a name.
class Utf8Copy
{
public:
    Utf8Copy(const std::string& path, const CodePage& page, const std::function<void()>& look)
        : _look(look), _path(path), _page(page),
          _target(std::make_shared<datafile::ScratchFile>(
              base::nativePath(hostToUtf8(GetVexaTempPath()))))
    {
    }

    /// Returns the copy, positioned at its start. Throws CaseFileError.
    std::shared_ptr<datafile::ScratchFile> make();

private:
    /// Appends complete lines.
    void write(std::string_view lines);
    [[noreturn]] void refuse(std::string_view lines) const;
    const std::function<void()>& _look;
    const std::string& _path;
    const CodePage& _page;
    std::shared_ptr<datafile::ScratchFile> _target;
    std::ptrdiff_t _lines = 0; ///< number of lines written
    std::string _converted;
};

/// Converts complete lines, because no character spans a line end.
std::shared_ptr<datafile::ScratchFile> Utf8Copy::make()
{
    const base::FileDescriptor source(open(_path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source)
        failToRead(_path);
    std::string pending;
    std::string block(kUtf8Block, '\0');
    ssize_t got = 0;
    while ((got = source.readUpTo(block.data(), block.size())) > 0) {
        _look();
        pending.append(block.data(), static_cast<std::size_t>(got));
        const std::size_t lines = pending.rfind('\n') + 1;
        write(std::string_view(pending).substr(0, lines));
        pending.erase(0, lines);
    }
    if (got < 0)
        failToRead(_path);
    write(pending);
    _target->rewind();
    return std::move(_target);
}

void Utf8Copy::write(std::string_view lines)
{
    if (!_page.toUtf8(lines, _converted))
        refuse(lines);
    if (!_target->write(_converted))
        failToCopy(_path, "in UTF-8");
    _lines += std::count(lines.begin(), lines.end(), '\n');
}

/// Reports the line that cannot be converted.
void Utf8Copy::refuse(std::string_view lines) const
{
    std::ptrdiff_t line = _lines + 1;
    std::string converted;
    for (std::size_t end = lines.find('\n');
         end != std::string_view::npos && _page.toUtf8(lines.substr(0, end), converted);
         end = lines.find('\n')) {
        lines.remove_prefix(end + 1);
        ++line;
    }
    throw CaseFileError(_path,
                        ":" + std::to_string(line) + ": the file is not text in " + _page.name(),
                        CaseFileError::kNotInEncoding);
}

} // namespace

std::shared_ptr<CodePage> codePageOfFile(const std::string& name)
{
    auto page = CodePage::open(name);
    if (!page && CodePage::isKnown(name))
        throw CaseFileError({}, "files in the encoding " + name + " cannot be read",
                            CaseFileError::kUnreadEncoding);
    if (!page)
        throw CaseFileError({}, "the encoding " + name + " is not known",
                            CaseFileError::kUnknownEncoding);
    return page;
}

std::shared_ptr<datafile::ScratchFile> utf8Copy(const std::string& path, const CodePage& page,
                                                const std::function<void()>& look)
{
    return Utf8Copy(path, page, look).make();
}

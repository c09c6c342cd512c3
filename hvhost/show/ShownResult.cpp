#include "hvhost/show/ShownResult.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <ostream>
#include <streambuf>
#include <utility>

#include "datafile/Fault.h"
#include "datafile/PendingFile.h"
#include "datafile/SpaceFault.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/OutputPath.h"
#include "hvhost/base/StandardStreams.h"

namespace {

/// A stream buffer that passes its content on in chunks.
class ChunkBuffer : public std::streambuf
{
public:
    using Take = std::function<void(const std::string& chunk)>;
    explicit ChunkBuffer(Take take) : _take(std::move(take)) { reset(); }

private:
    int_type overflow(int_type character) override
    {
        handOn();
        if (character != traits_type::eof())
            sputc(traits_type::to_char_type(character));
        return traits_type::not_eof(character);
    }
    int sync() override
    {
        handOn();
        return 0;
    }
    void handOn()
    {
        _take(std::string(pbase(), pptr()));
        reset();
    }
    void reset() { setp(_chunk.data(), _chunk.data() + _chunk.size()); }

    Take _take;
    std::array<char, 65536> _chunk{};
};

void writeInChunks(const std::function<void(std::ostream&)>& write, ChunkBuffer::Take take)
{
    ChunkBuffer buffer(std::move(take));
    std::ostream out(&buffer);
    // Lets exceptions of the buffer pass through the stream.
    out.exceptions(std::ios::badbit);
    write(out);
    out.flush();
}

} // namespace

ShownResult::ShownResult(const std::string& path, bool mayReplace, const InterruptWatch& watch)
    : _name(path),
      _path(path.empty() || path == kStandardStream ? std::string() : outputPath(path, mayReplace)),
      _watch(watch)
{
}

void ShownResult::deliver(const std::string& text) const
{
    deliver([&](std::ostream& out) { out << text; });
}

void ShownResult::deliver(const std::function<void(std::ostream&)>& write) const
{
    if (isFile()) {
        writeFile(write);
        return;
    }
    const InterruptWatch::Abandonable work(_watch);
    writeInChunks(write, [&](const std::string& chunk) { printToStandardOutput(chunk, _watch); });
}

void ShownResult::writeFile(const std::function<void(std::ostream&)>& write) const
{
    try {
        datafile::PendingFile file(_path, "");
        InterruptWatch::Abandonable work(_watch, file.path());
        errno = 0;
        std::ofstream out(file.path(), std::ios::binary);
        out.exceptions(std::ios::badbit | std::ios::failbit);
        writeInChunks(write, [&](const std::string& chunk) {
            _watch.check();
            out.write(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        });
        out.close();
        work.end();
        _watch.check();
        file.commit();
    } catch (const datafile::Fault& fault) {
        std::string text = fault.text();
        if (text.starts_with(_path))
            text.replace(0, _path.size(), _name);
        throw CommandFault(ExitStatus::JobFailed, text);
    } catch (const std::ios::failure&) {
        const int reason = errno;
        if (const char* const full = datafile::spaceFaultOf(reason))
            throw CommandFault(ExitStatus::JobFailed, _name + ": " + full);
        throw CommandFault(ExitStatus::JobFailed,
                           _name + ": the file cannot be written" +
                               (reason == 0 ? "" : std::string(": ") + std::strerror(reason)));
    }
}

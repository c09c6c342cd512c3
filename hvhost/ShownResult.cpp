#include "ShownResult.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <ostream>
#include <streambuf>

#include "CommandFault.h"
#include "OutputPath.h"
#include "StandardStreams.h"
#include "datafile/Fault.h"
#include "datafile/PendingFile.h"

namespace {

/// Prints what a stream gets, a chunk at a time.
class PrintingBuffer : public std::streambuf
{
public:
    explicit PrintingBuffer(const InterruptWatch& watch) : _watch(watch) { reset(); }

private:
    int_type overflow(int_type character) override
    {
        print();
        if (character != traits_type::eof())
            sputc(traits_type::to_char_type(character));
        return traits_type::not_eof(character);
    }
    int sync() override
    {
        print();
        return 0;
    }
    void print()
    {
        printToStandardOutput(std::string(pbase(), pptr()), _watch);
        reset();
    }
    void reset() { setp(_chunk.data(), _chunk.data() + _chunk.size()); }

    const InterruptWatch& _watch;
    std::array<char, 65536> _chunk{};
};

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
    PrintingBuffer buffer(_watch);
    std::ostream out(&buffer);
    // What the buffer throws goes through the stream.
    out.exceptions(std::ios::badbit);
    write(out);
    out.flush();
}

void ShownResult::writeFile(const std::function<void(std::ostream&)>& write) const
{
    try {
        datafile::PendingFile file(_path, "");
        errno = 0;
        std::ofstream out(file.path(), std::ios::binary);
        out.exceptions(std::ios::badbit | std::ios::failbit);
        write(out);
        out.close();
        file.commit();
    } catch (const datafile::Fault& fault) {
        std::string text = fault.text();
        if (text.starts_with(_path))
            text.replace(0, _path.size(), _name);
        throw CommandFault(ExitStatus::JobFailed, text);
    } catch (const std::ios::failure&) {
        const int reason = errno;
        throw CommandFault(ExitStatus::JobFailed,
                           _name + ": the file cannot be written" +
                               (reason == 0 ? "" : std::string(": ") + std::strerror(reason)));
    }
}

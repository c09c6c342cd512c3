#include "components/ContainerFiles.h"

namespace EmbeddedHV {

ContainerFiles::ContainerFiles(JobContext& context, const std::vector<std::string>& destinations,
                               const std::string& component)
    : _context(context)
{
    for (const std::string& destination : destinations)
        _files.emplace_back(destination, component);
    for (const std::string& destination : destinations)
        _context.announce(destination, component);
}

void ContainerFiles::publish()
{
    // Before the files get their final names: nothing may fail after that.
    std::vector<std::string> written;
    for (const ContainerFile& file : _files)
        written.push_back(canonicalPath(file.destination()));
    std::size_t done = 0;
    try {
        for (; done < _files.size(); ++done)
            _files[done].commit();
    } catch (...) {
        while (done > 0)
            _files[--done].revoke();
        throw;
    }
    for (const std::string& path : written)
        _context.unwritten.erase(path);
}

} // namespace EmbeddedHV

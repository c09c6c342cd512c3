#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace EmbeddedHV {

/// The zip archive in a container that a component reads. One thread at a time.
class ContainerArchive
{
public:
    /// `component` is the beginning of every error message. Throws JobError if the file cannot be
    /// opened or is not a zip archive.
    ContainerArchive(std::string path, std::string component);
    ContainerArchive(const ContainerArchive&) = delete;
    ContainerArchive& operator=(const ContainerArchive&) = delete;
    ~ContainerArchive();

    const std::string& path() const { return _path; }
    /// The content of an entry, verified with the archive's checksum; empty if there is no such
    /// entry. Throws JobError if the entry is damaged or longer than `most` bytes.
    std::optional<std::string> member(const std::string& name, std::uint64_t most) const;
    /// The same for a required entry. Throws JobError if it is absent.
    std::string neededMember(const std::string& name, std::uint64_t most) const;

private:
    struct Closing
    {
        void operator()(void* archive) const;
    };
    [[noreturn]] void refuse(const std::string& problem) const;

    std::string _path;
    std::string _component;
    std::unique_ptr<void, Closing> _archive;
};

} // namespace EmbeddedHV

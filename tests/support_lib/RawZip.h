#pragma once

#include <cstdint>
#include <string>

/// One entry of an archive, as it will be written: every field may lie.
struct RawEntry
{
    std::string name;
    std::string data; ///< as stored in the archive, so deflated for method 8
    std::uint16_t method = 0;
    std::uint32_t crc = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::uint16_t flags = 0;
    std::uint16_t madeBy = 0;
    std::uint32_t attributes = 0;

    static RawEntry stored(const std::string& name, const std::string& content);
    static RawEntry deflated(const std::string& name, const std::string& content);
    /// Made on Unix, with this mode.
    static RawEntry withMode(const std::string& name, std::uint32_t mode,
                             const std::string& content = "x");
};

/// Writes archives that no tool would write.
class RawZip
{
public:
    RawZip& add(const RawEntry& entry);
    /// Names the data of the entry before once more.
    RawZip& share(const RawEntry& entry);
    std::string finish() const;
    /// With a wide end record that counts this many entries.
    std::string finishWide(std::uint64_t declaredCount) const;

private:
    std::string endRecord(std::uint16_t count) const;

    std::string _content;
    std::string _directory;
    std::uint32_t _lastOffset = 0;
    std::uint16_t _count = 0;
};

#include "RawZip.h"

#include <stdexcept>

#include <zlib.h>

namespace {

void put(std::string& bytes, std::uint64_t value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xff);
}

// The fields of both headers, up to the length of the name.
void putCommonFields(std::string& bytes, const RawEntry& entry)
{
    put(bytes, 20, 2);
    put(bytes, entry.flags, 2);
    put(bytes, entry.method, 2);
    put(bytes, 0x00210000, 4);
    put(bytes, entry.crc, 4);
    put(bytes, entry.packedSize, 4);
    put(bytes, entry.size, 4);
    put(bytes, entry.name.size(), 2);
}

std::uint32_t checksum(const std::string& content)
{
    return static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(content.data()),
                                            static_cast<uInt>(content.size())));
}

std::string deflateRaw(const std::string& content)
{
    z_stream stream = {};
    if (deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflateInit2");
    std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

} // namespace

RawEntry RawEntry::stored(const std::string& name, const std::string& content)
{
    RawEntry entry;
    entry.name = name;
    entry.data = content;
    entry.crc = checksum(content);
    entry.packedSize = entry.size = static_cast<std::uint32_t>(content.size());
    return entry;
}

RawEntry RawEntry::deflated(const std::string& name, const std::string& content)
{
    RawEntry entry = stored(name, content);
    entry.data = deflateRaw(content);
    entry.method = 8;
    entry.packedSize = static_cast<std::uint32_t>(entry.data.size());
    return entry;
}

RawEntry RawEntry::withMode(const std::string& name, std::uint32_t mode, const std::string& content)
{
    RawEntry entry = stored(name, content);
    entry.madeBy = 3 << 8;
    entry.attributes = mode << 16;
    return entry;
}

RawZip& RawZip::add(const RawEntry& entry)
{
    _lastOffset = static_cast<std::uint32_t>(_content.size());
    put(_content, 0x04034b50, 4);
    putCommonFields(_content, entry);
    put(_content, 0, 2);
    _content += entry.name + entry.data;
    return share(entry);
}

RawZip& RawZip::share(const RawEntry& entry)
{
    put(_directory, 0x02014b50, 4);
    put(_directory, entry.madeBy, 2);
    putCommonFields(_directory, entry);
    put(_directory, 0, 8);
    put(_directory, entry.attributes, 4);
    put(_directory, _lastOffset, 4);
    _directory += entry.name;
    ++_count;
    return *this;
}

std::string RawZip::endRecord(std::uint16_t count) const
{
    std::string record;
    put(record, 0x06054b50, 4);
    put(record, 0, 4);
    put(record, count, 2);
    put(record, count, 2);
    put(record, _directory.size(), 4);
    put(record, _content.size(), 4);
    put(record, 0, 2);
    return record;
}

std::string RawZip::finish() const
{
    return _content + _directory + endRecord(_count);
}

std::string RawZip::finishWide(std::uint64_t declaredCount) const
{
    std::string wide;
    put(wide, 0x06064b50, 4);
    put(wide, 44, 8);
    put(wide, 45, 2);
    put(wide, 45, 2);
    put(wide, 0, 8);
    put(wide, declaredCount, 8);
    put(wide, declaredCount, 8);
    put(wide, _directory.size(), 8);
    put(wide, _content.size(), 8);
    put(wide, 0x07064b50, 4);
    put(wide, 0, 4);
    put(wide, _content.size() + _directory.size(), 8);
    put(wide, 1, 4);
    return _content + _directory + wide + endRecord(0xffff);
}

#include "HostLines.h"

#include <chrono>
#include <cstdint>
#include <cstring>
#include <string>

#include "Journal.h"
#include "text/CodePage.h"

namespace {

constexpr int kEndMark = -1;

} // namespace

void IpcPutC(const int* code, const int* subCode, const int* length, const void* buffer,
             const int* end)
{
    // A missing end mark means that the caller has miscounted its arguments.
    if (!code || !subCode || !length || !end || *end != kEndMark)
        return;
    HostJournal::Entry entry;
    if (*code == kIpcProgress) {
        if (!buffer || *length != static_cast<int>(sizeof(entry.number)))
            return;
        entry.kind = HostJournal::Kind::Progress;
        // The buffer may be unaligned.
        std::memcpy(&entry.number, buffer, sizeof(entry.number));
    } else {
        entry.kind = HostJournal::Kind::Output;
        entry.text = "IpcPutC " + std::to_string(*code) + " " + std::to_string(*subCode);
    }
    HostJournal::instance().add(std::move(entry));
}

void DSPLNS(const int*, const int*, const char* text, const int* length)
{
    if (!text || !length || *length < 0)
        return;
    const std::string_view line(text, static_cast<std::size_t>(*length));
    HostJournal::instance().add({HostJournal::Kind::Line, hostToUtf8(line)});
}

unsigned int HostMilliseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    // The cast drops the upper bits, which makes the counter wrap around.
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

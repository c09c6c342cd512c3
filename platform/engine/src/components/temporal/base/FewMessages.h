#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "steps/Settings.h"

namespace EmbeddedHV {

/// Sends messages of one kind, up to a limit.
class FewMessages
{
public:
    /// The sink is borrowed. `rest` ends the sentence "... and N more " for those that are not
    /// sent.
    FewMessages(const MessageSink& sink, std::string id, std::int64_t most, std::string rest)
        : _sink(sink), _id(std::move(id)), _most(most), _rest(std::move(rest))
    {
    }

    void send(const FaultParts& parts)
    {
        if (++_count <= _most)
            _sink(_id, parts);
    }
    /// Sends the number of messages that were left out, if there were any.
    void finish()
    {
        if (_count > _most)
            _sink(_id, {.limit = _most,
                        .what = "... and " + std::to_string(_count - _most) + " more " + _rest});
    }

private:
    const MessageSink& _sink;
    std::string _id;
    std::int64_t _most;
    std::string _rest;
    std::int64_t _count = 0;
};

} // namespace EmbeddedHV

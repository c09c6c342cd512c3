#include "runtime/Reporter.h"

#include <algorithm>

#include "datafile/FaultJson.h"

namespace EmbeddedHV {

Reporter::Reporter(ExecutionListener& listener, Cancellation& cancellation)
    : _listener(listener), _extended(dynamic_cast<ExtendedExecutionListener*>(&listener)),
      _cancellation(cancellation)
{
}

template <class Call>
void Reporter::call(Call callback)
{
    const std::lock_guard lock(_mutex);
    if (_thrown)
        return;
    try {
        callback();
    } catch (...) {
        _thrown = std::current_exception();
        // A listener that throws ends the job. rethrow passes the exception on at the end.
        _cancellation.cancel();
    }
}

void Reporter::init(const std::string& executionId)
{
    call([&] { _listener.onInit(executionId); });
}

void Reporter::message(const std::string& id, const FaultParts& parts)
{
    call([&] {
        const std::string text = sentenceOf(parts);
        _messages.push_back({text, jsonOf(id, parts)});
        if (_extended)
            _extended->onMessage(id, text);
        else
            _listener.onMessage(text);
    });
}

void Reporter::progress(double fraction)
{
    call([&] {
        // If a statement is started again, its progress would go back.
        if (fraction <= _reported)
            return;
        _reported = std::min(fraction, 1.0);
        _listener.onProgress(static_cast<float>(_reported));
    });
}

void Reporter::success()
{
    call([&] { _listener.onSuccess(); });
}

void Reporter::cancelled()
{
    call([&] { _listener.onCancel(); });
}

void Reporter::error(const JobError& error)
{
    call([&] { _listener.onError(error.id(), error.text(), jsonOf(error)); });
}

void Reporter::rethrow() const
{
    if (_thrown)
        std::rethrow_exception(_thrown);
}

} // namespace EmbeddedHV

#pragma once

#include <functional>

namespace EmbeddedHV {

/// Receives the finished fraction of some work, 0 to 1. Cheap enough to be called for every series
/// or point of time.
using ProgressSink = std::function<void(double)>;

/// The sink of a part of the work: from `from` to `to` of the whole.
inline ProgressSink partOf(ProgressSink whole, double from, double to)
{
    return [whole = std::move(whole), from, to](double part) { whole(from + (to - from) * part); };
}

/// `done` of `all` equal pieces as a fraction.
template <class Count>
double fractionOf(Count done, Count all)
{
    return static_cast<double>(done) / static_cast<double>(all);
}

} // namespace EmbeddedHV

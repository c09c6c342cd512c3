#pragma once

#include <chrono>
#include <mutex>
#include <string>

/// Shows the progress of a job and the time that remains on one line of standard error, which is
/// redrawn and removed at the end. By default only on a terminal, and only for work that takes more
/// than a second.
class ProgressLine
{
public:
    /// `mode` is auto, always or never.
    ProgressLine(const std::string& mode, std::string label);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Begins to measure the time, for new work.
    void restart();
    /// `fraction` is the finished part, from 0 to 1. Any thread.
    void show(double fraction);
    /// Removes the line.
    void clear();

private:
    std::mutex _mutex;
    bool _enabled;
    bool _always;
    bool _drawn = false;
    int _lastPercent = -1;
    std::string _label;
    std::chrono::steady_clock::time_point _start;
};

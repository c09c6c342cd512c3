#pragma once

#include <string>
#include <utility>

#include "RowDataIterator.h"
#include "bridge/JNIObjectManager.h"
#include "runner/HVRunner.h"

/// The rows of a file that the last job wrote, released at the end of the scope. Must be destroyed
/// before the execution, which owns them.
class OutputRows
{
public:
    OutputRows(HVRunner& runner, const std::string& fileName)
        : _rows(runner.getOutputIterator(fileName))
    {
    }
    ~OutputRows()
    {
        try {
            dispose();
        } catch (...) { // NOLINT(bugprone-empty-catch): an exception may be in flight
        }
    }
    OutputRows(const OutputRows&) = delete;
    OutputRows& operator=(const OutputRows&) = delete;

    /// Null if the job wrote no such file.
    EmbeddedHV::RowDataIterator* get() const { return _rows; }
    /// Releases the rows now and passes on what the engine throws.
    void dispose()
    {
        if (auto* const rows = std::exchange(_rows, nullptr))
            rows->dispose(JNIObjectManager::getManager()->getEnv());
    }

private:
    EmbeddedHV::RowDataIterator* _rows;
};

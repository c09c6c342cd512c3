#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/JobOrigin.h"
#include "hvhost/combine/JoinKeys.h"
#include "hvhost/show/ResultTable.h"
#include "support/HVSimpleFile.h"

class HVLFunction;
class HVLWrite;
class HVRunner;
class JNIHvlProgram;

/// Statements of a job that count how well the keys of two inputs match, and their results. Borrows
/// all arguments.
class KeyReport
{
public:
    /// Keys of one side without a partner on the other side, with their number of records.
    struct Unmatched
    {
        long long keys = 0;
        double records = 0;
        ResultTable shown; ///< the first of them
    };
    /// Keys of both sides, and how many records of the right side have the same key.
    struct Matched
    {
        double keys = 0;
        double repeatedKeys = 0;    ///< that several records of the right side have
        double repeatedRecords = 0; ///< records of the left side with such a key
        double repeatedRows = 0;    ///< what these become
    };

    KeyReport(JNIHvlProgram& program, HVLFunction& left, HVLFunction& right,
              const std::vector<JoinKey>& keys);
    ~KeyReport();
    KeyReport(const KeyReport&) = delete;
    KeyReport& operator=(const KeyReport&) = delete;

    /// The statements, in their order.
    std::vector<HVLFunction*> statements() const;
    /// The files that they write.
    std::vector<JobOrigin::File> origins() const;
    /// Reads the results of the job. `most` is the number of keys to show of each side, -1 for all.
    void read(HVRunner& runner, long long most);

    const Matched& matched() const { return _matched; }
    const Unmatched& left() const { return _left; }
    const Unmatched& right() const { return _right; }

private:
    struct Steps;

    HVLFunction& addKeys(HVLFunction& records, const std::vector<std::string>& names,
                         const char* count);
    void addMatched(HVLFunction& left, HVLFunction& right, const std::vector<JoinKey>& keys);
    void addUnmatched(HVLFunction& left, HVLFunction& right, const std::vector<JoinKey>& keys,
                      std::size_t side, const HVSimpleFile& file);
    void addWrite(HVLFunction& last, const HVSimpleFile& file);

    JNIHvlProgram& _program;
    HVSimpleFile _matchedFile{"matched.hvbf", true, true};
    HVSimpleFile _leftFile{"left.hvbf", true, true};
    HVSimpleFile _rightFile{"right.hvbf", true, true};
    std::unique_ptr<Steps> _steps;
    Matched _matched;
    Unmatched _left;
    Unmatched _right;
};

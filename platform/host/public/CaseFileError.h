#pragma once

#include <string>

#include "ErrorText.h"

/// A data file cannot be opened or read. The text is the path of the file, its place in the file
/// and the reason. The other members are for host programs, which must not search the text.
class HOST_API CaseFileError : public ErrorText
{
public:
    /// Kinds that only the host reports. The others are those of the engine's errors.
    static constexpr const char* kNoRoomForCopy = "noRoomForCopy"; ///< no room for a temporary copy
    static constexpr const char* kOfHostMemory = "ofHostMemory"; ///< above the host's memory limit
    static constexpr const char* kUnknownEncoding = "unknownEncoding"; ///< no such encoding
    static constexpr const char* kUnreadEncoding = "unreadEncoding";   ///< one that cannot be read
    static constexpr const char* kNotInEncoding = "notInEncoding"; ///< bytes that it does not have

    /// The text is `path` + `rest`. The path may be empty.
    CaseFileError(const std::string& path, std::string rest, std::string kind = {},
                  std::string id = {});
    ~CaseFileError() override;

    /// The text with another name of the file.
    std::string textFor(const std::string& name) const;
    /// The id that the engine reports for the same error; may be empty.
    const std::string& id() const { return _id; }
    /// Distinguishes errors of one id; may be empty.
    const std::string& kind() const { return _kind; }

private:
    bool _hasPath;
    std::string _rest;
    std::string _kind;
    std::string _id;
};

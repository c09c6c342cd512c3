#include "runner/HVProgressListener.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "HostLines.h"
#include "TnOutput.h"
#include "VexaDataSource.h"

namespace {

/// Ids of engine messages whose content the host already shows in other ways.
constexpr std::array<std::string_view, 3> kDroppedIds{"AEQAE2264I", "AEQAF0151E", "AEQAR0051W"};

/// Messages without an id are not meant for users.
bool isDropped(const std::string& id)
{
    return id.empty() || std::find(kDroppedIds.begin(), kDroppedIds.end(), id) != kDroppedIds.end();
}

/// The host inserts the split variables and values of the present group.
void showLabelled(const TnUTF8String& text)
{
    TnComposite line("Split file [%1 = %2:,^1 = ^2:]1. ^2", true);
    line.Sublist();
    line.SplitList();
    line.EndSublist();
    line.Add(text);
    line.Finish();
    TnError(line, kShowInOutput, kLevelWarning);
}

/// A labelled line is always a warning; `level` is for a line without a label.
void show(const TnUTF8String& text, bool labelled, int level)
{
    if (labelled)
        showLabelled(text);
    else
        TnError(text, kShowInOutput, level);
}

} // namespace

HVProgressListener::HVProgressListener(TnProcedure* procedure)
    : _procedure(procedure),
      _progressValue(procedure != nullptr ? std::make_unique<double>(0.0) : nullptr)
{
}

HVProgressListener::~HVProgressListener() = default;

void HVProgressListener::reset()
{
    _state = NotStarted;
    _errorId.clear();
    _errorText.clear();
    _errorDetail.clear();
    _executionId.clear();
    _messages.clear();
}

void HVProgressListener::onCancel()
{
    _state = Cancelled;
}

void HVProgressListener::onError(const std::string& id, const std::string& text,
                                 const std::string& detail)
{
    _state = Failed;
    _errorId = id;
    _errorText = text;
    _errorDetail = detail;
}

void HVProgressListener::onInit(const std::string& executionId)
{
    _executionId = executionId;
}

void HVProgressListener::onMessage(const std::string&) {}

void HVProgressListener::onProgress(float fraction)
{
    _state = Running;
    if (_progressValue == nullptr)
        return;
    // The host reads the record by address and may look at the buffer after the call.
    *_progressValue = static_cast<double>(fraction);
    const int code = kIpcProgress;
    const int subCode = 0;
    const int length = sizeof(double);
    const int end = -1;
    IpcPutC(&code, &subCode, &length, _progressValue.get(), &end);
}

void HVProgressListener::onSuccess()
{
    _state = Succeeded;
}

void HVProgressListener::onMessage(const std::string& id, const std::string& text)
{
    _state = Running;
    if (!isDropped(id))
        _messages.push_back(text);
}

bool HVProgressListener::hasError(std::string& id, std::string& text, std::string& detail)
{
    if (_state != Failed)
        return false;
    id = _errorId;
    text = _errorText;
    detail = _errorDetail;
    return true;
}

void HVProgressListener::displayAllMessages(bool showError, bool splitLabel)
{
    if (_procedure == nullptr)
        return;
    const bool labelled = splitLabel && _procedure->DataSource().GetNSplitVars() != 0;
    displayMessages(labelled);
    displayEnd(showError, labelled);
}

void HVProgressListener::displayMessages(bool labelled) const
{
    // Local: each job shows its own messages.
    std::set<std::string> shown;
    for (const std::string& message : _messages)
        if (!message.empty() && shown.insert(message).second)
            show(TnUTF8String(message), labelled, kLevelWarning);
}

void HVProgressListener::displayEnd(bool showError, bool labelled) const
{
    if (_state == Failed && showError)
        show(TnUTF8String(_errorText, false), labelled, kLevelError);
    // Show this even without `showError`.
    if (_state == Cancelled)
        TnError(TnString("The Vexa Statistics run will terminate now.", true), kShowInOutput,
                kLevelError);
}

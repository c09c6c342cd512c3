#include "dialog/HVInteractive.h"

#include "EngineException.h"
#include "MultiByte.h"
#include "ParserMessage.h"
#include "runner/HVRunner.h"

namespace {

/// The reason of an unknown exception. explainUnknown replaces this text.
constexpr const char* kUnknown = "unknown HV message";

/// Runs a question. Converts an exception to a text; otherwise leaves `reason` unchanged.
template <class Question>
bool ask(const Question& question, std::string& reason)
{
    try {
        return question();
    } catch (const EmbeddedHV::JavaException& exception) {
        // The Java trace helps whoever maintains the engine. It follows the message.
        reason = std::string(exception.getMessage()) + "\nTrace message:\n" + exception.getTrace();
    } catch (const EmbeddedHV::Exception& exception) {
        reason = exception.getMessage();
    } catch (...) {
        reason = kUnknown;
    }
    return false;
}

} // namespace

void HVInteractive::ConverterDeleter::operator()(void* converter) const
{
    VEXAMBConverterDelete_A(converter);
}

HVInteractive::HVInteractive()
    : _runner(std::make_unique<HVRunner>()), _converter(VEXAMBConverterNew_A(nullptr))
{
}

HVInteractive::~HVInteractive() = default;

bool HVInteractive::tryRunHV(HVRunner& runner)
{
    _exceptionText.clear();
    return ask([&runner] { return runner.execute(); }, _exceptionText);
}

bool HVInteractive::tryGetMetadata(HVRunner& runner, const std::string& jobText,
                                   const HVStatContainer& container, std::string& result)
{
    _exceptionText.clear();
    if (ask([&] { return runner.getMetadata(jobText, container, result); }, _exceptionText))
        return true;
    // No exception: the engine has no data model.
    if (_exceptionText.empty())
        _exceptionText = kUnknown;
    return false;
}

void HVInteractive::resetJNI()
{
    _runner->resetJNI();
}

void HVInteractive::cleanJRef()
{
    _runner->cleanJRef();
}

void HVInteractive::cleanExecution()
{
    _runner->cleanExecution();
    // Has an effect only for runners with a procedure: a cancelled dialog stays stopped.
    _runner->resetStopRrocessor();
}

void HVInteractive::cancelExecution()
{
    _runner->cancelExecution();
}

bool HVInteractive::isStopProcessor()
{
    return _runner->isStopProcessor();
}

std::string HVInteractive::getExecutionId() const
{
    return _runner->getProgressListener()->getExecutionId();
}

HVProgressListener::ExecutionState HVInteractive::getState() const
{
    return _runner->getProgressListener()->getState();
}

bool HVInteractive::hasError(std::string& errorId, std::string& errorText, std::string& errorDetail)
{
    // Prefer the job's report: it has an id and a detail.
    if (_runner->getProgressListener()->hasError(errorId, errorText, errorDetail))
        return true;
    if (_exceptionText.empty())
        return false;
    errorText = _exceptionText;
    return true;
}

const std::vector<std::string>& HVInteractive::getMessages() const
{
    // Test the flag, not the list: a request without messages must not show those of an earlier
    // job.
    return _hasOwnMessages ? _messages : _runner->getProgressListener()->getMessages();
}

std::string HVInteractive::getMessageDetail(const std::string& text) const
{
    return _runner->getMessageDetail(text);
}

void HVInteractive::beginRequest()
{
    resetJNI();
    CleanExceptions();
    CleanMessages();
    _runner->getProgressListener()->reset();
}

void HVInteractive::AddMessage(const std::string& text)
{
    _messages.push_back(text);
    _hasOwnMessages = true;
}

void HVInteractive::UpdateMessageList()
{
    const std::vector<std::string>& messages = _runner->getProgressListener()->getMessages();
    _messages.insert(_messages.end(), messages.begin(), messages.end());
    _hasOwnMessages = true;
}

void HVInteractive::CleanMessages()
{
    _messages.clear();
    _hasOwnMessages = false;
}

void HVInteractive::CleanExceptions()
{
    _exceptionText.clear();
}

void HVInteractive::setTranslatedException(const char* message)
{
    _exceptionText = _runner->getParserMessage()->GetTranslatedText(message);
}

void HVInteractive::explainUnknown(const char* message)
{
    if (_exceptionText == kUnknown)
        setTranslatedException(message);
}

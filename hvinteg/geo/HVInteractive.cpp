#include "geo/HVInteractive.h"

#include "EngineException.h"
#include "MultiByte.h"
#include "ParserMessage.h"
#include "runner/HVRunner.h"

namespace {

/// The reason where nobody gives one. Callers know it by this text and say what they were at.
constexpr const char* kUnknown = "unknown HV message";

/// Asks the engine something. What it throws becomes a text; `reason` stays as it is otherwise.
template <class Question>
bool ask(const Question& question, std::string& reason)
{
    try {
        return question();
    } catch (const EmbeddedHV::JavaException& exception) {
        // The trace is for whoever looks after the engine, and goes where the message goes.
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
    // Nothing was thrown: the engine has no answer.
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
    // Reaches runners with a procedure only: this one stays stopped once a dialog was cancelled.
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
    // What a job reported has an id and a detail; what was thrown on the way is only its echo.
    if (_runner->getProgressListener()->hasError(errorId, errorText, errorDetail))
        return true;
    if (_exceptionText.empty())
        return false;
    errorText = _exceptionText;
    return true;
}

const std::vector<std::string>& HVInteractive::getMessages() const
{
    // By a flag and not by the list: a request that gathered nothing must not show an older job's.
    return _hasOwnMessages ? _messages : _runner->getProgressListener()->getMessages();
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
    const std::vector<std::string>& told = _runner->getProgressListener()->getMessages();
    _messages.insert(_messages.end(), told.begin(), told.end());
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

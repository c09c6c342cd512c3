#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Attention.h"
#include "support/HvintegExport.h"

class HVProgressListener;
class HVRunnerImpl;
class HVStatContainer;
class HVStatDataIterator;
class JNIJSONObject;
class ParserMessage;
class ProcedureDataSource;
class TnProcedure;

namespace EmbeddedHV {
class RowDataIterator;
}

/// Runs jobs on the engine, one at a time. A host procedure makes one runner, for itself; a dialog
/// makes one without a procedure.
///
///     HVRunner runner(&procedure);
///     runner.prepareActiveDS(procedure.DataSource(), true, false);
///     runner.prepareHVLJob(jobText);
///     runner.addInputIterator(&rows);
///     runner.execute();
///     runner.displayAllMessages(true, true);
///     runner.cleanExecution();
///
/// What the engine throws (EmbeddedHV::Exception, EmbeddedHV::JavaException) passes to the caller,
/// except where an operation says otherwise; a job that merely fails is told by execute's result
/// and the listener. All strings are UTF-8.
///
/// Threads: one thread at a time, the one that made the runner or called resetJNI last, uses the
/// runner. Only cancelExecution may come from any thread, at any moment.
class HVINTEG_EXPORT HVRunner
{
public:
    /// Stops a runner's job when the user interrupts the procedure. The host's adapter holds it
    /// while the job runs.
    class HVINTEG_EXPORT InterruptHandler : public VexaAdapter::InterruptHandler
    {
    public:
        /// The runner is borrowed.
        explicit InterruptHandler(HVRunner* runner) : _runner(runner) {}
        ~InterruptHandler() override;
        /// HVRunner::cancelExecution, on the thread of the interrupt.
        void interrupt() override;

    private:
        HVRunner* _runner;
    };

    /// What a coordinate system is: nothing is known of it, it has the units of a plane, or
    /// degrees.
    enum CSTYPE : std::int32_t
    {
        CSTYPE_None = 0,
        CSTYPE_Projected = 1,
        CSTYPE_Geographic = 2
    };

    /// A layer of a map service.
    struct LayerInfo
    {
        std::int32_t id = 0;
        std::vector<std::int32_t> subLayers; ///< ids of the layers in a group of layers
        std::string name;
        std::string keys; ///< fields that tell its shapes apart, with commas between them
        std::string description;
        std::string features; ///< the kind of its shapes
    };

    /// A projected coordinate system that suits an area.
    struct RecommendPCS
    {
        std::int32_t wkid = 0;
        std::string name;
        std::string wkt;
        /// Transformations between the system's datum and that of the area's corners, and for each
        /// whether it runs forward on the way to the system.
        std::vector<std::string> transMethods;
        std::vector<bool> transForward;
    };

    /// Collects the areas of a getRecommendPCSs, in degrees. Works in Java objects, on the thread
    /// of the runner.
    class HVINTEG_EXPORT RecommendPCSInputMaker
    {
    public:
        RecommendPCSInputMaker();
        RecommendPCSInputMaker(const RecommendPCSInputMaker&) = delete;
        RecommendPCSInputMaker& operator=(const RecommendPCSInputMaker&) = delete;
        ~RecommendPCSInputMaker();

        /// Adds an area; one of the same id takes its place.
        void addInput(int id, double leftUpperX, double leftUpperY, double rightLowerX,
                      double rightLowerY);
        std::string toString();

    private:
        std::unique_ptr<JNIJSONObject> _top;
    };

    /// The procedure is borrowed; null for a runner that shows nothing and leaves the host's run
    /// alone. The first runner starts the Java virtual machine if need be; what that throws passes.
    explicit HVRunner(TnProcedure* procedure = nullptr);
    HVRunner(const HVRunner&) = delete;
    HVRunner& operator=(const HVRunner&) = delete;
    /// Waits for calls of cancelExecution that are under way on other threads, and ends a remaining
    /// execution. Releases the process's Java references as cleanJRef does, and gives the host back
    /// the weight and split that prepareActiveDS took. Not from within cancelExecution.
    virtual ~HVRunner();

    /// Saves the host's weight and split and turns both off until the runner is destroyed. Warns of
    /// a setting in force that the procedure does not support. A further call saves a setting only
    /// if the host has turned one on since. Does nothing for a source without columns. Always true.
    bool prepareActiveDS(ProcedureDataSource& dataSource, bool supportsWeight, bool supportsSplit);

    /// Begins a job: forgets what the last one told, ends its execution, and hands the text to a
    /// new one. The first job of the process starts the engine. True, or an exception.
    bool prepareHVLJob(const std::string& jobText);

    /// Hand inputs and outputs to the prepared job. The objects stay the caller's and live until
    /// cleanExecution. Always true.
    bool addInputContainer(HVStatContainer* container);
    bool addOutputContainer(HVStatContainer* container);
    bool addInputIterator(HVStatDataIterator* iterator);

    /// Runs the prepared job and returns when the engine has finished. False if the job failed, or
    /// if this runner was stopped before; true for one that was cancelled on the way, which the
    /// listener's state and isStopProcessor tell.
    bool execute();

    /// Cancels the execution, has the host end the run (with a procedure only), and stops the
    /// runner, in this order.
    ///
    /// Any thread may call it, at any moment from the end of the constructor to the beginning of
    /// the destructor, also while other threads call it, and also between jobs or while the
    /// runner's thread is in another operation. The engine is called only if there is an execution
    /// whose text it has taken and that has not been ended; otherwise the runner is stopped, and
    /// the next execute does nothing. cleanExecution, prepareHVLJob, the questions that end an
    /// execution and the destructor wait until a call on another thread has returned. No lock is
    /// held while the engine works, so what the engine calls back from its cancel may use the
    /// listener, cancel again or end the execution.
    ///
    /// What the engine or the attachment to the Java virtual machine throws passes; the run and the
    /// runner then go on.
    void cancelExecution();
    /// Whether the runner is stopped: execute then does nothing.
    bool isStopProcessor();
    /// Lets a stopped runner run again; one without a procedure stays stopped.
    void resetStopRrocessor();

    /// Ends the execution, if there is one.
    void cleanExecution();
    /// Releases all Java references and wrappers that the object manager holds, of the process.
    void cleanJRef();
    /// Makes the calling thread the one whose Java environment is used.
    void resetJNI();

    /// Shows what the listener collected; see HVProgressListener::displayAllMessages.
    void displayAllMessages(bool showError, bool splitLabel);
    /// Neither has an effect; the second is always true.
    void displayMessage();
    bool displayOutputs();

    /// Rows of a file that the finished job wrote, named without a directory; null if there is
    /// none. The execution owns the object; the caller ends its use with RowDataIterator::dispose.
    EmbeddedHV::RowDataIterator* getOutputIterator(const std::string& fileName);
    /// The data model of a job's output, as XML, without running the job; ends a present execution.
    /// What the engine throws, at the end of that execution too, leaves `metadata` empty and the
    /// result true; otherwise the result is whether `metadata` has something in it.
    bool getMetadata(const std::string& jobText, const HVStatContainer& container,
                     std::string& metadata);

    /// Questions about maps. Each ends a present execution, except the one about an empty name.
    /// What the engine throws, at the end of that execution too, is an empty answer: no exception
    /// leaves these operations. A question that waits for a map service fails when the runner is
    /// stopped.
    ///
    /// What is known of a coordinate system, as JSON for ParseCoordinatesSystemInfo.
    std::string getCoordinatesSystemInfo(const std::string& name);
    std::string getCoordinatesSystemInfo(int wkid);
    /// The names of all geographic and of all projected coordinate systems.
    void getGeographics(std::vector<std::string>& names);
    void getProjections(std::vector<std::string>& names);
    /// The projected systems that suit the areas of a RecommendPCSInputMaker: one JSON text for
    /// each area, for ParseRecommendPCS, with at most `count` systems.
    void getRecommendPCSs(std::vector<std::string>& result, const std::string& input);
    void getRecommendPCSs(std::vector<std::string>& result, const std::string& input, int count);
    /// The layers of a map service, as JSON for ParseMapServiceLayers. A failure of the engine
    /// leaves `layers` empty and the result true; otherwise the result is whether there is a text.
    bool getMapServiceLayers(const std::string& url, std::string& layers);

    /// These read what the questions answer; false for an empty text. A text that is not JSON
    /// throws JNIException. They work on Java objects, on the thread of the runner.
    static bool ParseCoordinatesSystemInfo(const std::string& json, int& wkid, std::string& name,
                                           std::string& wkt, CSTYPE& type);
    static bool ParseMapServiceLayers(const std::string& json, std::vector<int>& ids,
                                      std::vector<std::string>& names);
    static bool ParseMapServiceLayers(const std::string& json, std::vector<LayerInfo>& layers);
    /// False, too, for a text that is not about exactly one area.
    static bool ParseRecommendPCS(const std::string& json, int& id,
                                  std::vector<RecommendPCS>& result);

    /// Both stay the runner's.
    const ParserMessage* getParserMessage() const;
    HVProgressListener* getProgressListener();

    /// Takes the host's present locale for the jobs to come.
    void UpdataHVAppSetting();

private:
    std::unique_ptr<HVRunnerImpl> _impl;
    // As prepareActiveDS found them; what is not above 0 is not given back.
    std::int32_t _savedWeight = -1;
    std::int32_t _savedSplit = 0;
    std::unique_ptr<ParserMessage> _parserMessage;
    TnProcedure* _procedure;
    std::unique_ptr<HVProgressListener> _listener;
};

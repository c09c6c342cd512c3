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

/// Runs jobs on the engine, one at a time. A host procedure creates one runner for itself; a dialog
/// creates one without a procedure.
///
///     HVRunner runner(&procedure);
///     runner.prepareActiveDS(procedure.DataSource(), true, false);
///     runner.prepareHVLJob(jobText);
///     runner.addInputIterator(&rows);
///     runner.execute();
///     runner.displayAllMessages(true, true);
///     runner.cleanExecution();
///
/// Exceptions of the engine (EmbeddedHV::Exception, EmbeddedHV::JavaException) are passed on unless
/// an operation says otherwise. A failed job is not an exception: execute returns false and the
/// listener has the error. All strings are UTF-8.
///
/// Threads: one thread at a time uses the runner: the one that created it or last called resetJNI.
/// Only cancelExecution may be called from any thread at any time.
class HVINTEG_EXPORT HVRunner
{
public:
    /// Stops a runner's job when the user interrupts the procedure. The host's adapter uses it
    /// while the job runs.
    class HVINTEG_EXPORT InterruptHandler : public VexaAdapter::InterruptHandler
    {
    public:
        /// The runner is borrowed.
        explicit InterruptHandler(HVRunner* runner) : _runner(runner) {}
        ~InterruptHandler() override;
        /// Calls HVRunner::cancelExecution on the thread of the interrupt.
        void interrupt() override;

    private:
        HVRunner* _runner;
    };

    /// Kind of a coordinate system.
    enum CSTYPE : std::int32_t
    {
        CSTYPE_None = 0,      ///< unknown
        CSTYPE_Projected = 1, ///< plane units
        CSTYPE_Geographic = 2 ///< degrees
    };

    /// A layer of a map service.
    struct LayerInfo
    {
        std::int32_t id = 0;                 ///< its number in the service
        std::vector<std::int32_t> subLayers; ///< ids of the layers in a group layer
        std::string name;                    ///< its name in the service
        std::string keys;        ///< fields that identify its shapes, separated by commas
        std::string description; ///< what the service says about it
        std::string features;    ///< the kind of its shapes
    };

    /// A projected coordinate system that suits an area.
    struct RecommendPCS
    {
        std::int32_t wkid = 0; ///< its well-known id
        std::string name;      ///< its name, UTF-8
        std::string wkt;       ///< its definition as well-known text
        /// Transformations between the datums of the system and of the area's corners. For each,
        /// transForward is true if it runs forward towards the system.
        std::vector<std::string> transMethods;
        std::vector<bool> transForward; ///< one for each of transMethods
    };

    /// Builds the input of getRecommendPCSs: a set of areas in degrees. Uses Java objects, on the
    /// thread of the runner. What Java throws is passed on.
    class HVINTEG_EXPORT RecommendPCSInputMaker
    {
    public:
        /// Starts without areas.
        RecommendPCSInputMaker();
        RecommendPCSInputMaker(const RecommendPCSInputMaker&) = delete;
        RecommendPCSInputMaker& operator=(const RecommendPCSInputMaker&) = delete;
        ~RecommendPCSInputMaker();

        /// Adds an area with its corners in degrees. Replaces an area of the same id.
        void addInput(int id, double leftUpperX, double leftUpperY, double rightLowerX,
                      double rightLowerY);
        /// The areas as JSON.
        std::string toString();

    private:
        std::unique_ptr<JNIJSONObject> _top;
    };

    /// The procedure is borrowed; a runner without one shows nothing and never ends the host's run.
    /// The first runner starts the Java virtual machine if necessary and passes on what that
    /// throws.
    explicit HVRunner(TnProcedure* procedure = nullptr);
    HVRunner(const HVRunner&) = delete;
    HVRunner& operator=(const HVRunner&) = delete;
    /// Waits for cancelExecution calls on other threads and ends a remaining execution. Releases
    /// the Java references of the process as cleanJRef does. Restores the host's weight and split
    /// from prepareActiveDS. Must not be called from within cancelExecution.
    virtual ~HVRunner();

    /// Saves the host's weight and split settings and turns both off until the destructor. Warns of
    /// a setting that the procedure does not support. Gives columns of unknown measurement level a
    /// level, and lets reading continue across split groups. A further call saves only a setting
    /// that the host has turned on since. Does nothing for a source without columns. Always returns
    /// true.
    bool prepareActiveDS(ProcedureDataSource& dataSource, bool supportsWeight, bool supportsSplit);

    /// Starts a job: clears the records of the last one, ends its execution and passes the text to
    /// a new one. The first job of the process starts the engine. Returns true or throws.
    bool prepareHVLJob(const std::string& jobText);

    /// Adds a container that the prepared job reads. The caller keeps ownership; it must live until
    /// cleanExecution. Requires prepareHVLJob. Always returns true.
    bool addInputContainer(HVStatContainer* container);
    /// Adds a container that the prepared job writes. The caller keeps ownership; it must live
    /// until cleanExecution. Requires prepareHVLJob. Always returns true.
    bool addOutputContainer(HVStatContainer* container);
    /// Adds rows that the prepared job reads by the name of the iterator. The caller keeps
    /// ownership; the iterator must live until cleanExecution. Requires prepareHVLJob. Always
    /// returns true.
    bool addInputIterator(HVStatDataIterator* iterator);

    /// Runs the prepared job and returns when the engine has finished. Returns false if the job
    /// fails or the runner was stopped before. Returns true for a job that is cancelled while it
    /// runs; the listener's state and isStopProcessor report that.
    bool execute();

    /// Cancels the execution, ends the host's run (with a procedure only) and stops the runner, in
    /// this order.
    ///
    /// Any thread may call it, at any time from the end of the constructor to the start of the
    /// destructor, also concurrently. The engine is called only if an execution has accepted its
    /// text and has not been ended. Otherwise only the runner is stopped, and the next execute does
    /// nothing. cleanExecution, prepareHVLJob, the questions that end an execution and the
    /// destructor wait for calls on other threads. No lock is held while the engine works: its
    /// callbacks may use the listener, cancel again or end the execution.
    ///
    /// What the engine or the attachment to the Java virtual machine throws is passed on; the run
    /// and the runner then continue.
    void cancelExecution();
    /// Whether the runner is stopped: execute then does nothing. Any thread.
    bool isStopProcessor();
    /// Lets a stopped runner run again. Has no effect on a runner without a procedure.
    void resetStopRrocessor();

    /// Ends the execution, if there is one. Waits for a cancel on another thread.
    void cleanExecution();
    /// Releases all Java references and wrappers that the object manager of the process holds.
    void cleanJRef();
    /// Makes the calling thread the one whose Java environment is used. Throws VexaJVMError if the
    /// thread cannot be attached.
    void resetJNI();

    /// Shows the messages of the last job; see HVProgressListener::displayAllMessages.
    void displayAllMessages(bool showError, bool splitLabel);
    /// The detail of a message of the last job, for host programs: what the engine knows about it
    /// as data. Empty if the last job has no such message, or the engine gives no details. The
    /// embedded engine gives a JSON object that docs/contracts.md describes.
    std::string getMessageDetail(const std::string& text) const;
    /// Does nothing.
    void displayMessage();
    /// Does nothing and returns true.
    bool displayOutputs();

    /// Rows of a file that the finished job wrote; `fileName` has no directory. Returns null if
    /// there are none or the engine throws. The execution owns the object; the caller ends its use
    /// with RowDataIterator::dispose.
    EmbeddedHV::RowDataIterator* getOutputIterator(const std::string& fileName);
    /// Returns the data model of a job's output as XML, without running the job. Ends a present
    /// execution. If the engine throws, `metadata` is empty and the result is true. Otherwise the
    /// result is false if `metadata` is empty.
    bool getMetadata(const std::string& jobText, const HVStatContainer& container,
                     std::string& metadata);

    /// Returns the description of a coordinate system as JSON for ParseCoordinatesSystemInfo; empty
    /// for an unknown or empty name, or if the engine throws. Ends a present execution, unless the
    /// name is empty.
    std::string getCoordinatesSystemInfo(const std::string& name);
    /// Returns the description of the coordinate system with this well-known id as JSON for
    /// ParseCoordinatesSystemInfo; empty for an unknown id, or if the engine throws. Ends a present
    /// execution.
    std::string getCoordinatesSystemInfo(int wkid);
    /// Replaces `names` by the names of all geographic coordinate systems; by no names if the
    /// engine throws. Ends a present execution.
    void getGeographics(std::vector<std::string>& names);
    /// Replaces `names` by the names of all projected coordinate systems; by no names if the engine
    /// throws. Ends a present execution.
    void getProjections(std::vector<std::string>& names);
    /// Replaces `result` by the projected systems that suit the areas in `input`, made by
    /// RecommendPCSInputMaker: one JSON text per area, for ParseRecommendPCS. `result` is empty if
    /// the engine throws. Ends a present execution.
    void getRecommendPCSs(std::vector<std::string>& result, const std::string& input);
    /// Replaces `result` by at most `count` projected systems per area; otherwise as the overload
    /// without `count`.
    void getRecommendPCSs(std::vector<std::string>& result, const std::string& input, int count);
    /// Returns the layers of a map service as JSON for ParseMapServiceLayers. If the engine throws,
    /// `layers` is empty and the result is true; it throws when the runner is stopped while the
    /// service has not answered. Otherwise the result is false if `layers` is empty. Ends a present
    /// execution.
    bool getMapServiceLayers(const std::string& url, std::string& layers);

    /// Reads the answer of getCoordinatesSystemInfo. Returns false for an empty text. Throws
    /// JNIException for invalid JSON. Creates Java objects, on the thread of the runner.
    static bool ParseCoordinatesSystemInfo(const std::string& json, int& wkid, std::string& name,
                                           std::string& wkt, CSTYPE& type);
    /// Reads ids and names from the answer of getMapServiceLayers, one for each layer. Result,
    /// errors and thread are those of ParseCoordinatesSystemInfo.
    static bool ParseMapServiceLayers(const std::string& json, std::vector<int>& ids,
                                      std::vector<std::string>& names);
    /// Reads all properties from the answer of getMapServiceLayers. Result, errors and thread are
    /// those of ParseCoordinatesSystemInfo.
    static bool ParseMapServiceLayers(const std::string& json, std::vector<LayerInfo>& layers);
    /// Reads one text of getRecommendPCSs: the id of the area and its systems. Returns false for an
    /// empty text, or if the text does not describe exactly one area. Throws JNIException for
    /// invalid JSON. Creates Java objects, on the thread of the runner.
    static bool ParseRecommendPCS(const std::string& json, int& id,
                                  std::vector<RecommendPCS>& result);

    /// The texts of the runner's messages. Owned by the runner.
    const ParserMessage* getParserMessage() const;
    /// The listener of the runner's jobs. Owned by the runner.
    HVProgressListener* getProgressListener();

    /// Reads the host's present locale for later jobs. prepareHVLJob does so too.
    void UpdataHVAppSetting();

private:
    std::unique_ptr<HVRunnerImpl> _impl;
    // Values that prepareActiveDS found; only those above 0 are restored.
    std::int32_t _savedWeight = -1;
    std::int32_t _savedSplit = 0;
    std::unique_ptr<ParserMessage> _parserMessage;
    TnProcedure* _procedure;
    std::unique_ptr<HVProgressListener> _listener;
};

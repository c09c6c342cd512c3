#pragma once

#include "datafile/FaultIds.h"

/// The ids of the engine's errors and messages: "HVE", two letters for the area, four digits, and
/// E for an error, W for a warning or I for information. An id never changes its meaning, and the
/// number of a withdrawn one is not used again. docs/hvl.md lists them for users.
namespace EmbeddedHV::errors {

// PA: the text of a job.
inline constexpr const char* kSyntax = "HVEPA0001E";  ///< the text has a syntax error
inline constexpr const char* kNesting = "HVEPA0002E"; ///< nested deeper than the language allows
inline constexpr const char* kTextEncoding = "HVEPA0003E"; ///< bytes that are not UTF-8

// PL: the plan of a job, checked before any file is touched.
inline constexpr const char* kUnknownStep = "HVEPL0001E";    ///< no step of this name
inline constexpr const char* kStepArguments = "HVEPL0002E";  ///< wrong number or kind of arguments
inline constexpr const char* kSettingMissing = "HVEPL0003E"; ///< a setting that the step needs
inline constexpr const char* kSettingType = "HVEPL0004E";    ///< a setting of a wrong type or value
inline constexpr const char* kUnknownField = "HVEPL0005E";   ///< no such field in the input
inline constexpr const char* kDuplicateField = "HVEPL0006E"; ///< two output fields of one name
inline constexpr const char* kUnknownName = "HVEPL0007E";    ///< a name without a definition
inline constexpr const char* kNameBoundTwice = "HVEPL0008E"; ///< two definitions of one name
inline constexpr const char* kCycle = "HVEPL0009E";          ///< a definition that uses itself
inline constexpr const char* kNameKind = "HVEPL0010E";     ///< a chain for a value, or the reverse
inline constexpr const char* kNotLiteral = "HVEPL0011E";   ///< not JSON where JSON is wanted
inline constexpr const char* kStepInput = "HVEPL0012E";    ///< an input too many or too few
inline constexpr const char* kNotAvailable = "HVEPL0013E"; ///< known, but not in this engine
inline constexpr const char* kLiteralSize = "HVEPL0014E";  ///< a literal too large or too deep
inline constexpr const char* kSettingIgnored = "HVEPL0015W"; ///< the step has no such setting
inline constexpr const char* kFieldRenamed = "HVEPL0016W";   ///< differs only in letter case

// DE: the component descriptives.
inline constexpr const char* kSettingNotHonoured = "HVEDE0001W"; ///< a setting without effect
inline constexpr const char* kNoTimeInterval = "HVEDE0002W";     ///< fields that form no interval
inline constexpr const char* kNotAnalysed = "HVEDE0003W"; ///< an analysis that cannot be done

// TC: temporal causal models. Preparation: 1 to 19.
inline constexpr const char* kTsdpNoTime = "HVETC0001E";     ///< no field with the time
inline constexpr const char* kTsdpFieldTwice = "HVETC0002E"; ///< one field in two roles
inline constexpr const char* kTsdpFewPoints = "HVETC0003E";  ///< fewer than two points of time
inline constexpr const char* kTsdpNoSeries = "HVETC0004E";   ///< no series is left
inline constexpr const char* kTsdpTooLarge = "HVETC0005E";   ///< too many points, series or values
inline constexpr const char* kTsdpInterval = "HVETC0006E";   ///< no interval, or one without points
inline constexpr const char* kTsdpNoPoint = "HVETC0007W";    ///< records at no point of time
inline constexpr const char* kTsdpNoValue = "HVETC0008W";    ///< records without a dimension value
inline constexpr const char* kTsdpUnknown = "HVETC0009W";    ///< values that no series has
inline constexpr const char* kTsdpLeftOut = "HVETC0010W";    ///< a series that is left out
inline constexpr const char* kTsdpGaps = "HVETC0011W";       ///< a series with too many gaps
inline constexpr const char* kTsdpOverflow = "HVETC0012W";   ///< sums that are no numbers
inline constexpr const char* kNotPrepared = "HVETC0013E";    ///< records that are not its series
// Training and model files: 20 to 39.
inline constexpr const char* kModelFile = "HVETC0020E";         ///< not a model file, or damaged
inline constexpr const char* kModelVersion = "HVETC0021E";      ///< a model of an unknown version
inline constexpr const char* kPreparationFile = "HVETC0022E";   ///< not what tsdp writes
inline constexpr const char* kTooFewPoints = "HVETC0023E";      ///< no equation can be estimated
inline constexpr const char* kUnknownSeries = "HVETC0024E";     ///< a setting names no series
inline constexpr const char* kSeriesExcluded = "HVETC0025W";    ///< a series without an equation
inline constexpr const char* kLagsReduced = "HVETC0026W";       ///< fewer lags than asked for
inline constexpr const char* kPredictorExcluded = "HVETC0027W"; ///< collinear with an equation
inline constexpr const char* kPerfectFit = "HVETC0028W";        ///< an equation without error
// Scoring: 40 to 59.
inline constexpr const char* kNoEquation = "HVETC0040E";         ///< nothing predicts a series
inline constexpr const char* kSeriesNotInRecords = "HVETC0041E"; ///< records lack a series
inline constexpr const char* kNothingToScore = "HVETC0042E";     ///< no record
inline constexpr const char* kRefitFailed = "HVETC0043E";   ///< data that determine no equation
inline constexpr const char* kScenarioTime = "HVETC0044E";  ///< not beyond the data, or twice
inline constexpr const char* kScoringRemark = "HVETC0045W"; ///< series without values or effect
// Explanation: 60 to 79.
inline constexpr const char* kOutputNotHonoured = "HVETC0060W";    ///< a setting without effect
inline constexpr const char* kRecordsDiffer = "HVETC0061E";        ///< not the records of the model
inline constexpr const char* kSeriesWithoutRecords = "HVETC0062W"; ///< a metric without a field

// EX: expressions over records.
inline constexpr const char* kLambdaForm = "HVEEX0001E";      ///< not the form that the step takes
inline constexpr const char* kExpressionField = "HVEEX0002E"; ///< no such field in the record
inline constexpr const char* kUnknownFunction = "HVEEX0003E"; ///< no function of this name
inline constexpr const char* kExpressionName = "HVEEX0004E";  ///< no parameter or definition
inline constexpr const char* kOperandType = "HVEEX0005E"; ///< an operand or argument of wrong type
inline constexpr const char* kArgumentCount = "HVEEX0006E"; ///< too many or too few arguments
inline constexpr const char* kDeclaredType = "HVEEX0007E";  ///< a declared type that differs
inline constexpr const char* kPattern = "HVEEX0008E";   ///< a date or time pattern that is wrong
inline constexpr const char* kRecursion = "HVEEX0009E"; ///< a definition that calls itself
inline constexpr const char* kExpressionSize = "HVEEX0010E"; ///< too large or too deep to run
inline constexpr const char* kNotAValue = "HVEEX0011E";      ///< a form that has no value here
inline constexpr const char* kConversion = "HVEEX0012E"; ///< a value did not convert, at run time

// IO: data sources and row iterators; those of files are the file library's.
using namespace datafile::faults;
inline constexpr const char* kUnknownDataSource = "HVEIO0013E"; ///< no data source of this name
inline constexpr const char* kAppendMismatch = "HVEIO0014E"; ///< fields that do not fit the source
inline constexpr const char* kIteratorModel = "HVEIO0018E";  ///< the data model of a row iterator
inline constexpr const char* kIteratorFailed = "HVEIO0019E"; ///< a row iterator threw
inline constexpr const char* kIteratorValue = "HVEIO0020E";  ///< a value that the field cannot hold
inline constexpr const char* kMissingCut = "HVEIO0021W";    ///< more missing values than a file has
inline constexpr const char* kTimeDropped = "HVEIO0022W";   ///< a date of a row has a time of day
inline constexpr const char* kTooMuchToSend = "HVEIO0024E"; ///< more than a cluster is sent
inline constexpr const char* kTooMuchToCollect =
    "HVEIO0025E"; ///< more than is collected from a cluster

// GE: shapes, map services and coordinate systems.
inline constexpr const char* kMapService = "HVEGE0001E";    ///< a map service returns no records
inline constexpr const char* kUnknownSystem = "HVEGE0002E"; ///< no such coordinate system
inline constexpr const char* kUnknownTransformation = "HVEGE0003E"; ///< no such transformation
inline constexpr const char* kNoShapes = "HVEGE0004E";   ///< a field or an input without shapes
inline constexpr const char* kNoSystem = "HVEGE0005E";   ///< shapes without a coordinate system
inline constexpr const char* kNotAShape = "HVEGE0006E";  ///< a text that is not a shape
inline constexpr const char* kShapesLost = "HVEGE0007W"; ///< shapes that do not exist there

// RT: while a job runs.
inline constexpr const char* kQueryFailed = "HVERT0001E"; ///< the database failed, see the detail
inline constexpr const char* kOutOfMemory = "HVERT0002E"; ///< not enough memory
inline constexpr const char* kOutOfRange = "HVERT0003E";  ///< a number beyond its type
inline constexpr const char* kInternal = "HVERT0004E";    ///< an internal error of the engine
inline constexpr const char* kNoStatement = "HVERT0005W"; ///< a job without a statement
inline constexpr const char* kResultsOverflow = "HVERT0006W"; ///< results that became missing
inline constexpr const char* kNoCluster = "HVERT0007E";       ///< no connection to the cluster
inline constexpr const char* kClusterLost = "HVERT0008E";     ///< the connection was lost in a job

} // namespace EmbeddedHV::errors

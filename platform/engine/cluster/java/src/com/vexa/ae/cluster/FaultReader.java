package com.vexa.ae.cluster;

import java.util.Map;
import org.apache.spark.QueryContext;
import org.apache.spark.SparkThrowable;
import org.sparkproject.io.grpc.Status;
import org.sparkproject.io.grpc.StatusRuntimeException;

/** Turns what the client throws into a fault. */
final class FaultReader
{
    private FaultReader() {}

    /** `sql` is the statement, or "": the line of a fault is counted in it. `failure` is how the
     * last call failed, or null: the client replaces it by an exception without its code. */
    static ClusterFault read(Throwable thrown, String sql, Status failure)
    {
        if (thrown instanceof ClusterFault fault) {
            return fault;
        }
        SparkThrowable known = conditionOf(thrown);
        if (known != null) {
            return statementFault(known, thrown, sql);
        }
        if (failure != null && isOfTransport(thrown)) {
            return new ClusterFault(kindOf(failure), messageOf(failure), thrown);
        }
        return new ClusterFault(ClusterFault.Kind.SERVER, String.valueOf(thrown.getMessage()), thrown);
    }

    private static ClusterFault statementFault(SparkThrowable known, Throwable thrown, String sql)
    {
        String condition = known.getCondition();
        int start = -1;
        int line = 0;
        QueryContext[] contexts = known.getQueryContext();
        if (contexts != null && contexts.length > 0 && contexts[0].stopIndex() > 0) {
            start = contexts[0].startIndex();
            line = lineOf(sql, start);
        }
        Map<String, String> parameters = known.getMessageParameters();
        return new ClusterFault(kindOf(known), condition, known.getSqlState(),
            parameters == null ? Map.of() : parameters, start, line, thrown.getMessage(), thrown);
    }

    private static ClusterFault.Kind kindOf(SparkThrowable known)
    {
        String condition = known.getCondition();
        if (condition.startsWith("OPERATION_CANCELED")) {
            return ClusterFault.Kind.INTERRUPTED;
        }
        if (condition.startsWith("INVALID_HANDLE")) {
            return ClusterFault.Kind.SESSION_LOST;
        }
        // The class of internal errors.
        if (String.valueOf(known.getSqlState()).startsWith("XX")) {
            return ClusterFault.Kind.SERVER;
        }
        return ClusterFault.Kind.STATEMENT;
    }

    private static ClusterFault.Kind kindOf(Status status)
    {
        return switch (status.getCode()) {
            case UNAVAILABLE, DEADLINE_EXCEEDED -> ClusterFault.Kind.UNREACHABLE;
            case UNAUTHENTICATED, PERMISSION_DENIED -> ClusterFault.Kind.DENIED;
            case CANCELLED -> ClusterFault.Kind.INTERRUPTED;
            // An HTTP server that is not a Connect server answers so.
            case UNIMPLEMENTED -> ClusterFault.Kind.ADDRESS;
            default -> ClusterFault.Kind.SERVER;
        };
    }

    /** The status with its cause, which is where a refused connection says so. */
    private static String messageOf(Status status)
    {
        String text = status.getDescription() == null ? status.getCode().name() : status.getDescription();
        Throwable cause = status.getCause();
        return cause == null || cause.getMessage() == null ? text : text + ": " + cause.getMessage();
    }

    /** The first throwable of the chain that names a condition. A failed task has it as its
     * cause. */
    private static SparkThrowable conditionOf(Throwable thrown)
    {
        for (Throwable each = thrown; each != null; each = each.getCause()) {
            if (each instanceof SparkThrowable known && isOfServer(known.getCondition())) {
                return known;
            }
        }
        return null;
    }

    /** The client has conditions of its own, for failures without one. */
    private static boolean isOfServer(String condition)
    {
        return condition != null && !condition.startsWith("CONNECT_CLIENT");
    }

    /** Whether the client has replaced the status of a call. Other exceptions are not from a call. */
    private static boolean isOfTransport(Throwable thrown)
    {
        return thrown instanceof StatusRuntimeException
            || thrown instanceof SparkThrowable known && !isOfServer(known.getCondition());
    }

    private static int lineOf(String sql, int start)
    {
        return 1 + (int) sql.chars().limit(start).filter(character -> character == '\n').count();
    }
}

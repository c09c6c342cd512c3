package com.vexa.ae.cluster;

import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.stream.LongStream;
import org.apache.spark.connect.proto.DataType;
import org.apache.spark.connect.proto.ExecutePlanResponse;
import org.apache.spark.connect.proto.ExecutePlanResponse.ExecutionProgress;
import org.apache.spark.connect.proto.ExecutePlanResponse.ObservedMetrics;
import org.apache.spark.sql.util.CloseableIterator;

/** A running statement: its records in batches, and its progress in between. One thread at a
 * time. */
public final class ResultStream implements AutoCloseable
{
    /** What `next` has found. */
    public static final int END = 0;
    public static final int BATCH = 1;
    public static final int PROGRESS = 2;

    private final Connection connection;
    private final String sql;
    private final CloseableIterator<ExecutePlanResponse> responses;
    private final ArrowReader reader = new ArrowReader();
    private final long[] progress = new long[4];
    private final Map<String, Long> counts = new LinkedHashMap<>();
    private ColumnBatch batch;
    private String schema = "";
    private boolean isClosed;

    ResultStream(Connection connection, String sql, CloseableIterator<ExecutePlanResponse> responses)
    {
        this.connection = connection;
        this.sql = sql;
        this.responses = responses;
    }

    /** Waits for the next batch or the next report of the server, which comes every other second. A
     * statement that is not a query has no batches; it is done when this returns END. */
    public int next() throws ClusterFault
    {
        connection.begin();
        try {
            while (responses.hasNext()) {
                ExecutePlanResponse response = responses.next();
                if (response.hasSchema()) {
                    schema = schemaOf(response.getSchema());
                }
                response.getObservedMetricsList().forEach(this::readCounts);
                if (response.hasArrowBatch()) {
                    batch = reader.read(response.getArrowBatch().getData());
                    return BATCH;
                }
                if (response.hasExecutionProgress()) {
                    readProgress(response.getExecutionProgress());
                    return PROGRESS;
                }
            }
            close();
            return END;
        } catch (Exception | AssertionError thrown) {
            close();
            throw FaultReader.read(thrown, sql, connection.failure());
        }
    }

    /** The last batch. Its block is used again by the next one. */
    public ColumnBatch batch()
    {
        return batch;
    }

    /** The columns as JSON, see ClusterSession.schema; "" before the first batch. */
    public String schema()
    {
        return schema;
    }

    /** Of all stages that the server knows so far: tasks, completed tasks, bytes read; then the
     * tasks that are running. */
    public long[] progress()
    {
        return progress.clone();
    }

    /** The metrics of ClusterSession.addCounted: a name and a value in turn. Complete at END. */
    public long[] counts()
    {
        return counts.entrySet().stream()
            .flatMapToLong(count -> LongStream.of(Long.parseLong(count.getKey()), count.getValue())).toArray();
    }

    /** Tells the server that no more records are needed. Does not interrupt a statement that
     * runs. */
    @Override
    public void close()
    {
        if (isClosed) {
            return;
        }
        isClosed = true;
        try {
            responses.close();
        } catch (Exception lost) {
            // The server drops what nobody asks for.
        }
    }

    private void readProgress(ExecutionProgress report)
    {
        Arrays.fill(progress, 0);
        for (ExecutionProgress.StageInfo stage : report.getStagesList()) {
            progress[0] += stage.getNumTasks();
            progress[1] += stage.getNumCompletedTasks();
            progress[2] += stage.getInputBytesRead();
        }
        progress[3] = report.getNumInflightTasks();
    }

    /** A query that the server did not need to run has no values. */
    private void readCounts(ObservedMetrics metrics)
    {
        for (int index = 0; index < metrics.getValuesCount(); ++index) {
            counts.put(metrics.getKeys(index), (long) metrics.getValues(index).getInteger());
        }
    }

    private static String schemaOf(DataType type)
    {
        return SqlTypes.json(type.getStruct());
    }
}

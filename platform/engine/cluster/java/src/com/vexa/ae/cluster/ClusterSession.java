package com.vexa.ae.cluster;

import org.apache.spark.connect.proto.AnalyzePlanRequest;
import org.apache.spark.connect.proto.Catalog;
import org.apache.spark.connect.proto.Command;
import org.apache.spark.connect.proto.ConfigRequest;
import org.apache.spark.connect.proto.CreateDataFrameViewCommand;
import org.apache.spark.connect.proto.DropTempView;
import org.apache.spark.connect.proto.KeyValue;
import org.apache.spark.connect.proto.LocalRelation;
import org.apache.spark.connect.proto.Plan;
import org.apache.spark.connect.proto.Relation;
import org.apache.spark.connect.proto.SqlCommand;
import org.apache.spark.connect.proto.WriteOperation;
import org.apache.spark.sql.connect.client.SparkConnectClient;
import scala.Option;

/**
 * A session on a cluster's server. Its views and settings end with it.
 *
 * One thread at a time, except `interrupt` and `abandon`, which any thread may call. A name of a view needs no quotes.
 */
public final class ClusterSession implements AutoCloseable
{
    private final Connection connection;
    private final SparkConnectClient client;
    private final long retryMillis;
    private final CountedQueries counted = new CountedQueries();
    private boolean isClosed;

    /**
     * A session that is not connected yet.
     *
     * @param url "sc://host:port", with options after "/;" as the server's documentation describes them
     * @param callMillis how long connect, and later each call that runs no statement, may take
     * @param retryMillis how long after its last answer a server is tried again, once connected
     */
    public ClusterSession(String url, long callMillis, long retryMillis) throws ClusterFault
    {
        connection = new Connection(url, callMillis);
        client = connection.client();
        this.retryMillis = retryMillis;
    }

    /** Connects to the server. Returns its version, for example "4.2.0". */
    public String connect() throws ClusterFault
    {
        String version = ask("", () -> client.analyze(AnalyzePlanRequest.newBuilder().setSparkVersion(
            AnalyzePlanRequest.SparkVersion.getDefaultInstance())).getSparkVersion().getVersion());
        connection.setRetryMillis(retryMillis);
        return version;
    }

    /** Ends a call of connect, which then fails. So do those that follow, but for close. Any thread. */
    public void abandon()
    {
        connection.abandon();
    }

    /** Changes settings of this session: a name and a value in turn. */
    public void configure(String... settings) throws ClusterFault
    {
        ConfigRequest.Set.Builder set = ConfigRequest.Set.newBuilder();
        for (int index = 0; index + 1 < settings.length; index += 2) {
            set.addPairs(KeyValue.newBuilder().setKey(settings[index]).setValue(settings[index + 1]));
        }
        ask("", () -> client.config(ConfigRequest.Operation.newBuilder().setSet(set).build()));
    }

    /** The columns of a query, as a JSON list of objects with name, type and nullable. Runs
     * nothing. */
    public String schema(String query) throws ClusterFault
    {
        Plan plan = Plan.newBuilder().setRoot(relation(query)).build();
        return ask(query, () -> SqlTypes.json(client.analyze(AnalyzePlanRequest.newBuilder().setSchema(
            AnalyzePlanRequest.Schema.newBuilder().setPlan(plan))).getSchema().getSchema().getStruct()));
    }

    /** Starts a query. Faults come from the stream as well. The tag is what `interrupt` takes. */
    public ResultStream query(String sql, String tag) throws ClusterFault
    {
        return start(Plan.newBuilder().setRoot(relation(sql)).build(), sql, tag);
    }

    /** Starts a statement that returns no records, such as one that writes. */
    public ResultStream command(String sql, String tag) throws ClusterFault
    {
        return start(planOf(Command.newBuilder()
            .setSqlCommand(SqlCommand.newBuilder().setInput(relation(sql)))), sql, tag);
    }

    /**
     * Defines a query whose records are counted while a later statement reads it by its name. The statement's
     * ResultStream has the counts. Asks the server nothing.
     *
     * @param name occurs in no text but those that read the query
     * @param metrics the name of a metric, which is an integer, and its aggregate in SQL, an INT, in turn
     */
    public void addCounted(String name, String query, String... metrics)
    {
        counted.add(name, query, metrics);
    }

    /** Registers a query as a view, in the place of one of this name. */
    public void register(String view, String query) throws ClusterFault
    {
        registerRelation(view, relation(query), query);
    }

    /** Removes a view, if there is one of this name. */
    public void unregister(String view) throws ClusterFault
    {
        Relation drop = Relation.newBuilder().setCatalog(Catalog.newBuilder()
            .setDropTempView(DropTempView.newBuilder().setViewName(view))).build();
        finish(start(Plan.newBuilder().setRoot(drop).build(), "", ""));
    }

    /** Rows on their way to the cluster. */
    public RowUpload upload(String[] names, String[] types) throws ClusterFault
    {
        return new RowUpload(this, new ArrowWriter(names, types));
    }

    /** Interrupts all statements with this tag, which then fail. Returns how many there were.
     * Any thread. */
    public int interrupt(String tag) throws ClusterFault
    {
        return ask("", () -> client.interruptTag(tag).getInterruptedIdsCount());
    }

    /** Ends the session, here and on the server. A server that does not answer is not waited
     * for. */
    @Override
    public void close()
    {
        if (isClosed) {
            return;
        }
        isClosed = true;
        connection.setRetryMillis(0);
        try {
            client.releaseSession();
        } catch (Exception lost) {
            // The server ends a session that nobody uses.
        } finally {
            connection.close();
        }
    }

    void registerRelation(String view, Relation relation, String sql) throws ClusterFault
    {
        finish(start(planOf(Command.newBuilder().setCreateDataframeView(CreateDataFrameViewCommand
            .newBuilder().setInput(relation).setName(quoted(view)).setReplace(true))), sql, ""));
    }

    void append(LocalRelation rows, String path, String tag) throws ClusterFault
    {
        Relation input = Relation.newBuilder().setLocalRelation(rows).build();
        finish(start(planOf(Command.newBuilder().setWriteOperation(WriteOperation.newBuilder()
            .setInput(input).setSource("parquet").setPath(path)
            .setMode(WriteOperation.SaveMode.SAVE_MODE_APPEND))), "", tag));
    }

    private static String quoted(String name)
    {
        return "`" + name.replace("`", "``") + "`";
    }

    private Relation relation(String sql)
    {
        return counted.relation(sql);
    }

    private static Plan planOf(Command.Builder command)
    {
        return Plan.newBuilder().setCommand(command).build();
    }

    private ResultStream start(Plan plan, String sql, String tag) throws ClusterFault
    {
        return ask(sql, () -> {
            client.clearTags();
            if (!tag.isEmpty()) {
                client.addTag(tag);
            }
            return new ResultStream(connection, sql, client.execute(plan, Option.empty()));
        });
    }

    private static void finish(ResultStream stream) throws ClusterFault
    {
        try (stream) {
            while (stream.next() != ResultStream.END) {
                // Progress, and the answer of the command.
            }
        }
    }

    /** What is asked of the client. */
    private interface Question<T>
    {
        T answer() throws Exception;
    }

    private <T> T ask(String sql, Question<T> question) throws ClusterFault
    {
        connection.begin();
        try {
            return question.answer();
        } catch (Exception | AssertionError thrown) {
            throw FaultReader.read(thrown, sql, connection.failure());
        }
    }
}

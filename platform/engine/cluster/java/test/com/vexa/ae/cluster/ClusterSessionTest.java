package com.vexa.ae.cluster;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotSame;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.vexa.ae.loading.ClusterLibrary;
import java.io.File;
import java.io.IOException;
import java.lang.reflect.Field;
import java.net.ServerSocket;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.LongStream;
import org.junit.jupiter.api.MethodOrderer;
import org.junit.jupiter.api.Order;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.TestMethodOrder;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** Sessions on a real server. The last test kills it. */
@TestMethodOrder(MethodOrderer.OrderAnnotation.class)
class ClusterSessionTest
{
    private static final String URL = System.getProperty("cluster.url");
    private static final String SCRATCH = System.getProperty("cluster.scratch");
    private static final int LIMIT = 20_000;
    private static final int MANY = 200_000;

    private static ClusterSession open() throws ClusterFault
    {
        ClusterSession session = new ClusterSession(URL, LIMIT, 3_000);
        assertTrue(session.connect().matches("4\\..*"));
        session.configure("spark.sql.session.timeZone", "UTC", "spark.sql.timestampType",
            "TIMESTAMP_NTZ", "spark.sql.timeType.enabled", "true");
        return session;
    }

    private static List<String> types(String schema)
    {
        List<String> types = new ArrayList<>();
        Matcher type = Pattern.compile("\"type\":\"([^\"]+)\"").matcher(schema);
        while (type.find()) {
            types.add(type.group(1));
        }
        return types;
    }

    /** The records of a query, with "|" between their values. */
    private static List<String> records(ClusterSession session, String sql) throws ClusterFault
    {
        List<String> records = new ArrayList<>();
        try (ResultStream stream = session.query(sql, "")) {
            for (int event = stream.next(); event != ResultStream.END; event = stream.next()) {
                if (event != ResultStream.BATCH) {
                    continue;
                }
                List<String> types = types(stream.schema());
                for (int row = 0; row < stream.batch().records(); ++row) {
                    List<String> values = new ArrayList<>();
                    for (int column = 0; column < types.size(); ++column) {
                        values.add(Columns.text(stream.batch(), types.get(column), column, row));
                    }
                    records.add(String.join("|", values));
                }
            }
        }
        return records;
    }

    @Test
    void everyTypeComesWithItsMissingValue() throws ClusterFault
    {
        String columns = "CAST(5 AS BIGINT) i, -0.5D r, 'ä\\'\u0001😀' s, DATE'1500-02-28' d,"
            + " TIME'12:34:56.123456' t, TIMESTAMP_NTZ'1582-10-10 00:00:00.000001' m, true b,"
            + " CAST(-12.345 AS DECIMAL(38,3)) n, '' e";
        try (ClusterSession session = open()) {
            assertEquals(List.of("BIGINT", "DOUBLE", "STRING", "DATE", "TIME(6)", "TIMESTAMP_NTZ",
                "BOOLEAN", "DECIMAL(38,3)", "STRING"), types(session.schema("SELECT " + columns)));
            assertEquals(
                List.of("5|-0.5|ä'\u0001😀|-171606|45296123456000|-12219724799999999|1|-12345|",
                    "null|null|null|null|null|null|null|null|null"),
                records(session, "WITH t AS (SELECT " + columns + ") SELECT * FROM t UNION ALL "
                    + "SELECT null, null, null, null, null, null, null, null, null FROM t"));
            assertEquals(List.of(), records(session, "SELECT 1 WHERE false"));
        }
    }

    @Test
    void manyRecordsComeInBoundedBatches() throws ClusterFault
    {
        long records = 0;
        long sum = 0;
        int batches = 0;
        try (ClusterSession session = open();
                ResultStream stream = session.query(
                    "SELECT id, CAST(id AS STRING) s FROM range(" + MANY + ")", "")) {
            for (int event = stream.next(); event != ResultStream.END; event = stream.next()) {
                if (event != ResultStream.BATCH) {
                    continue;
                }
                ++batches;
                ColumnBatch batch = stream.batch();
                assertTrue(batch.block().limit() < 5 << 20);
                for (int row = 0; row < batch.records(); ++row, ++records) {
                    sum += Long.parseLong(Columns.text(batch, "BIGINT", 0, row))
                        - Long.parseLong(Columns.text(batch, "STRING", 1, row)) + 1;
                }
            }
        }
        assertEquals(MANY, records);
        assertEquals(MANY, sum);
        assertTrue(batches > 1, "one batch");
    }

    private static ColumnBatch uploaded(long first, int records)
    {
        Columns columns = new Columns(7);
        List<Long> numbers = LongStream.range(first, first + records).boxed().toList();
        columns.add(numbers);
        columns.add(numbers.stream().map(n -> n % 10 == 0 ? null : n / 2.0).toList());
        columns.add(numbers.stream().map(n -> n % 10 == 1 ? null : "ä" + n).toList());
        columns.add(numbers.stream().map(n -> n % 10 == 2 ? null : -141428 - (int) (n % 7)).toList());
        columns.add(numbers.stream().map(n -> n % 10 == 3 ? null : n * 1000).toList());
        columns.add(numbers.stream().map(n -> n % 10 == 4 ? null : -n).toList());
        columns.add(numbers.stream().map(n -> n % 10 == 5 ? null : n % 2 == 1).toList());
        return columns.batch(records);
    }

    @Test
    void uploadedRecordsComeBackFromAFolderAndFromAView() throws ClusterFault
    {
        String[] names = {"i", "r`x", "s", "d", "t", "m", "b"};
        String[] types = {"BIGINT", "DOUBLE", "STRING", "DATE", "TIME", "TIMESTAMP_NTZ", "BOOLEAN"};
        String folder = SCRATCH + "/uploaded";
        String counts = "SELECT count(*), sum(i), count(`r``x`), count(s), count(d), count(t), count(m),"
            + " count(b), count_if(b), sum(CAST(substr(s, 2) AS BIGINT)) FROM ";
        String oneRow = " WHERE i = 27";
        String row = "27|13.5|ä27|-141434|27000|-27|1";
        try (ClusterSession session = open()) {
            RowUpload upload = session.upload(names, types);
            for (int first = 0; first < MANY; first += 50_000) {
                upload.append(folder, uploaded(first, 50_000), "upload");
            }
            // Record n has "ä" and n as its text, except where n ends in 1.
            long sum = MANY * (MANY - 1L) / 2;
            long ofOnes = LongStream.range(0, MANY / 10).map(n -> 10 * n + 1).sum();
            String expected = MANY + "|" + sum + "|" + "180000|".repeat(6) + "80000|" + (sum - ofOnes);
            assertEquals(List.of(expected), records(session, counts + "parquet.`" + folder + "`"));
            assertEquals(List.of(row),
                records(session, "SELECT * FROM parquet.`" + folder + "`" + oneRow));

            upload.register("a `view", uploaded(0, 100));
            assertEquals(List.of("100|4950|90|90|90|90|90|90|40|4490"),
                records(session, counts + "`a ``view`"));
            assertEquals(List.of(row), records(session, "SELECT * FROM `a ``view`" + oneRow));
            session.register("second", "SELECT i FROM `a ``view`");
            assertEquals(List.of("4950"), records(session, "SELECT sum(i) FROM second"));
            session.unregister("a `view");
            session.unregister("a `view");
            ClusterFault fault = assertThrows(ClusterFault.class,
                () -> records(session, "SELECT * FROM `a ``view`"));
            assertEquals("TABLE_OR_VIEW_NOT_FOUND", fault.condition());
        }
    }

    /** What a statement, a query or one that writes, has counted. */
    private static Map<Long, Long> counts(ResultStream statement) throws ClusterFault
    {
        Map<Long, Long> counts = new TreeMap<>();
        try (statement) {
            while (statement.next() != ResultStream.END) {
                // Records and progress
            }
            long[] numbers = statement.counts();
            for (int index = 0; index < numbers.length; index += 2) {
                counts.put(numbers[index], numbers[index + 1]);
            }
        }
        return counts;
    }

    @Test
    void recordsAreCountedOnTheirWay() throws ClusterFault
    {
        String odd = "size(collect_set(CASE WHEN k % 2 = 1 THEN k END))";
        String great = "size(collect_set(CASE WHEN s > 20 THEN k END))";
        try (ClusterSession session = open()) {
            session.addCounted("first_counted",
                "SELECT id % 10 AS k, sum(id) AS s FROM range(0, 50, 1, 4) GROUP BY 1 ORDER BY 1",
                "7", odd, "12", great);
            session.addCounted("second_counted",
                "SELECT k % 4 AS k, count(*) AS s FROM first_counted GROUP BY 1", "3", odd);
            assertEquals(Map.of(7L, 5L, 12L, 10L), counts(session.query("SELECT k FROM first_counted", "")));
            for (String all : List.of(
                // Sorts by ranges, for which the server looks at the records twice
                "SELECT * FROM first_counted ORDER BY s DESC",
                "SELECT * FROM first_counted a JOIN first_counted b USING (k)",
                "SELECT count(*) FROM first_counted",
                "SELECT * FROM first_counted WHERE k = 3")) {
                assertEquals(Map.of(7L, 5L, 12L, 10L), counts(session.query(all, "")), all);
            }
            String write = "INSERT OVERWRITE DIRECTORY '" + SCRATCH + "/counted' USING parquet ";
            assertEquals(Map.of(3L, 2L, 7L, 5L, 12L, 10L),
                counts(session.command(write + "SELECT * FROM second_counted", "")));
            assertEquals(Map.of(), counts(session.query("SELECT 1", "")));
            assertEquals(List.of("BIGINT", "BIGINT"), types(session.schema("SELECT * FROM second_counted")));
        }
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {
        "SELECT\\n 1/0 | STATEMENT | DIVIDE_BY_ZERO | \"sqlState\":\"22012\".*\"start\":8,\"line\":2",
        "SELEC 1 | STATEMENT | PARSE_SYNTAX_ERROR | \"error\":\"'SELEC'\"",
        "SELECT nix FROM range(1) | STATEMENT | UNRESOLVED_COLUMN.WITH_SUGGESTION | `nix`",
        "SELECT 9223372036854775807 + id FROM range(9) | STATEMENT | ARITHMETIC_OVERFLOW | 22003",
        "SELECT raise_error(concat('x', id)) FROM range(9) | STATEMENT | USER_RAISED_EXCEPTION | \"errorMessage\":\"x",
        "SELECT array(1) | USE | '' | column 1",
    })
    void aFaultSaysWhereItIsAsData(String sql, String kind, String condition, String data)
        throws ClusterFault
    {
        try (ClusterSession session = open()) {
            ClusterFault fault = assertThrows(ClusterFault.class,
                () -> records(session, sql.replace("\\n", "\n")));
            assertEquals(kind, fault.kind().name());
            assertEquals(condition, fault.condition());
            assertTrue(Pattern.compile(data).matcher(fault.data()).find(), fault.data());
            assertEquals(List.of("1"), records(session, "SELECT 1"));
        }
    }

    @ParameterizedTest
    @CsvSource({
        "http://localhost:1, ADDRESS, Scheme",
        "sc://127.0.0.1:1, UNREACHABLE, Connection refused",
        "sc://no-such-host.invalid:15002, UNREACHABLE, no-such-host.invalid",
    })
    void aWrongAddressIsOneFaultWithItsCause(String url, String kind, String words)
    {
        long start = System.nanoTime();
        ClusterFault fault = assertThrows(ClusterFault.class, () -> {
            try (ClusterSession session = new ClusterSession(url, LIMIT, 60_000)) {
                session.connect();
            }
        });
        assertEquals(kind, fault.kind().name());
        assertTrue(fault.getMessage().contains(words), fault.getMessage());
        assertTrue(System.nanoTime() - start < 15e9, "it is tried for too long");
    }

    @Test
    void aConnectionIsAbandoned() throws Exception
    {
        // It takes connections and does not answer.
        try (ServerSocket silent = new ServerSocket(0);
                ClusterSession session = new ClusterSession(
                    "sc://127.0.0.1:" + silent.getLocalPort(), LIMIT, 60_000)) {
            Thread abandons = new Thread(() -> {
                try {
                    silent.accept();
                } catch (IOException closed) {
                    // The next call fails.
                }
                session.abandon();
            });
            abandons.start();
            long start = System.nanoTime();
            assertThrows(ClusterFault.class, session::connect);
            assertTrue(System.nanoTime() - start < 10e9, "it waits for the answer");
            abandons.join();
        }
    }

    /** A job may be cancelled just after it is connected. */
    @Test
    void nothingIsTriedAgainOnceAbandoned() throws Exception
    {
        try (ClusterSession session = new ClusterSession(URL, LIMIT, 60_000)) {
            session.connect();
            session.abandon();
            long start = System.nanoTime();
            assertThrows(ClusterFault.class, () -> session.configure("hv.test", "1"));
            assertTrue(System.nanoTime() - start < 10e9, "it is tried again");
        }
    }

    private interface Work
    {
        void run(ResultStream stream) throws Exception;
    }

    /** Runs a query of minutes, does something once it reports progress, and returns its fault. */
    private static ClusterFault faultOfLongQuery(ClusterSession session, Work work) throws Exception
    {
        try (ResultStream stream = session.query(
                "SELECT count_if(sha(CAST(id AS STRING)) LIKE '%a%') FROM range(100000000000)", "job")) {
            while (stream.progress()[3] == 0) {
                assertEquals(ResultStream.PROGRESS, stream.next());
            }
            assertTrue(stream.progress()[0] > 0, "no tasks");
            work.run(stream);
            return assertThrows(ClusterFault.class, () -> {
                while (stream.next() != ResultStream.END) {
                    // Progress.
                }
            });
        }
    }

    @Test
    void anotherThreadInterruptsAQuery() throws Exception
    {
        ExecutorService other = Executors.newSingleThreadExecutor();
        try (ClusterSession session = open()) {
            long[] start = new long[1];
            ClusterFault fault = faultOfLongQuery(session, stream -> {
                start[0] = System.nanoTime();
                Callable<Integer> interrupt = () -> session.interrupt("job");
                Future<Integer> interrupted = other.submit(interrupt);
                assertEquals(1, interrupted.get());
            });
            assertEquals(ClusterFault.Kind.INTERRUPTED, fault.kind());
            assertTrue(System.nanoTime() - start[0] < 2e9, "it takes more than two seconds");
            assertEquals(0, session.interrupt("job"));
            assertEquals(List.of("1"), records(session, "SELECT 1"));
        } finally {
            other.shutdown();
        }
    }

    private static List<String> threads()
    {
        return Thread.getAllStackTraces().keySet().stream().map(Thread::getName).sorted().toList();
    }

    private static int shutdownHooks() throws ReflectiveOperationException
    {
        Field hooks = Class.forName("java.lang.ApplicationShutdownHooks").getDeclaredField("hooks");
        hooks.setAccessible(true);
        return ((Map<?, ?>) hooks.get(null)).size();
    }

    private static String[] filesIn(String folder)
    {
        String[] names = new File(folder).list();
        Arrays.sort(names);
        return names;
    }

    @Test
    @Order(Order.DEFAULT + 1)
    void twoHundredSessionsLeaveNothing() throws Exception
    {
        String temp = System.getProperty("java.io.tmpdir");
        List<String> threads = List.of();
        int files = 0;
        int hooks = 0;
        String[] temporary = {};
        for (int number = 0; number <= 200; ++number) {
            try (ClusterSession session = open()) {
                assertEquals(List.of("1"), records(session, "SELECT 1"));
            }
            if (number == 0) {
                Thread.sleep(3000); // shared threads end when nobody has used them for a second
                threads = threads();
                files = filesIn("/proc/self/fd").length;
                hooks = shutdownHooks();
                temporary = filesIn(temp);
            }
        }
        Thread.sleep(3000);
        assertEquals(threads, threads());
        assertTrue(threads.stream().noneMatch(name -> name.contains("grpc")), threads.toString());
        assertTrue(filesIn("/proc/self/fd").length <= files, "open files");
        assertEquals(hooks, shutdownHooks());
        assertEquals(List.of(temporary), List.of(filesIn(temp)));
    }

    @Test
    @Order(Order.DEFAULT + 2)
    void theLibraryHasAClassLoaderOfItsOwn() throws Exception
    {
        ClassLoader before = Thread.currentThread().getContextClassLoader();
        Class<?> type = ClusterLibrary.open(System.getProperty("cluster.client"));
        assertNotSame(ClusterSession.class, type);
        try (AutoCloseable session = (AutoCloseable) type.getConstructor(String.class, long.class,
                long.class).newInstance(URL, (long) LIMIT, 0L)) {
            assertTrue(type.getMethod("connect").invoke(session).toString().startsWith("4."));
            assertEquals("[{\"name\":\"a\",\"type\":\"INT\",\"nullable\":false}]",
                type.getMethod("schema", String.class).invoke(session, "SELECT 1 AS a"));
        }
        assertSame(before, Thread.currentThread().getContextClassLoader());
    }

    @Test
    @Order(Order.DEFAULT + 3)
    void aKilledServerIsOneFault() throws Exception
    {
        ProcessHandle server = ProcessHandle.of(Long.getLong("cluster.server")).orElseThrow();
        try (ClusterSession session = open()) {
            long[] start = new long[1];
            ClusterFault fault = faultOfLongQuery(session, stream -> {
                start[0] = System.nanoTime();
                server.destroyForcibly();
            });
            assertEquals(ClusterFault.Kind.UNREACHABLE, fault.kind());
            assertTrue(System.nanoTime() - start[0] < 15e9, "it is tried for too long");
            assertEquals(ClusterFault.Kind.UNREACHABLE,
                assertThrows(ClusterFault.class, () -> records(session, "SELECT 1")).kind());
        }
    }
}

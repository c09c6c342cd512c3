package com.vexa.ae.cluster;

import java.io.IOException;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Runs the statements of standard input on the server of cluster.url. Each statement begins with its kind:
 * "query ", "command ", "set NAME=VALUE" or "view NAME=QUERY", and ends with a zero byte. Writes one line
 * for each: "ok" with the records, or "fault" with the condition and the message. Zero bytes and line
 * ends never occur in a result: bytes below a blank are written in hexadecimal after a backslash.
 */
final class StatementRunner
{
    private static final Pattern TYPE = Pattern.compile("\"type\":\"([^\"]+)\"");

    private StatementRunner() {}

    public static void main(String[] arguments) throws Exception
    {
        PrintStream out = new PrintStream(System.out, false, StandardCharsets.UTF_8);
        try (ClusterSession session = new ClusterSession(System.getProperty("cluster.url"), 120_000, 60_000)) {
            session.connect();
            for (String statement = next(); statement != null; statement = next()) {
                try {
                    out.print("ok" + run(session, statement) + '\n');
                } catch (ClusterFault fault) {
                    out.print("fault\t" + fault.condition() + '\t' + escaped(fault.getMessage()) + '\n');
                }
                out.flush();
            }
        }
    }

    private static String next() throws IOException
    {
        java.io.ByteArrayOutputStream bytes = new java.io.ByteArrayOutputStream();
        for (int c = System.in.read(); c > 0; c = System.in.read()) {
            bytes.write(c);
        }
        return bytes.size() == 0 ? null : bytes.toString(StandardCharsets.UTF_8);
    }

    private static String run(ClusterSession session, String statement) throws ClusterFault
    {
        String[] words = statement.split(" ", 2);
        switch (words[0]) {
            case "set" -> session.configure(words[1].split("=", 2));
            case "view" -> session.register(words[1].split("=", 2)[0], words[1].split("=", 2)[1]);
            case "command" -> {
                try (ResultStream stream = session.command(words[1], "")) {
                    while (stream.next() != ResultStream.END) {
                        // Progress
                    }
                }
            }
            default -> {
                return records(session, words[1]);
            }
        }
        return "";
    }

    /** A tab before each record, and a vertical bar between its values; null is "null". */
    private static String records(ClusterSession session, String sql) throws ClusterFault
    {
        StringBuilder records = new StringBuilder();
        try (ResultStream stream = session.query(sql, "")) {
            for (int event = stream.next(); event != ResultStream.END; event = stream.next()) {
                if (event != ResultStream.BATCH) {
                    continue;
                }
                List<String> types = types(stream.schema());
                for (int row = 0; row < stream.batch().records(); ++row) {
                    for (int column = 0; column < types.size(); ++column) {
                        records.append(column == 0 ? '\t' : '|').append(
                            escaped(Columns.text(stream.batch(), types.get(column), column, row)));
                    }
                }
            }
        }
        return records.toString();
    }

    private static List<String> types(String schema)
    {
        List<String> types = new ArrayList<>();
        Matcher type = TYPE.matcher(schema);
        while (type.find()) {
            types.add(type.group(1));
        }
        return types;
    }

    private static String escaped(String text)
    {
        if (text == null) {
            return "null";
        }
        StringBuilder written = new StringBuilder();
        for (char c : text.toCharArray()) {
            written.append(c < ' ' || c == '\\' || c == '|' ? String.format("\\%02x", (int) c) : c);
        }
        return written.toString();
    }
}

package com.vexa.ae.cluster;

import java.util.concurrent.TimeUnit;
import java.util.logging.Level;
import java.util.logging.Logger;
import org.apache.spark.sql.connect.client.RetryPolicy;
import org.apache.spark.sql.connect.client.SparkConnectClient;
import org.sparkproject.io.grpc.CallOptions;
import org.sparkproject.io.grpc.Channel;
import org.sparkproject.io.grpc.ClientCall;
import org.sparkproject.io.grpc.ClientInterceptor;
import org.sparkproject.io.grpc.ForwardingClientCall.SimpleForwardingClientCall;
import org.sparkproject.io.grpc.ForwardingClientCallListener.SimpleForwardingClientCallListener;
import org.sparkproject.io.grpc.Metadata;
import org.sparkproject.io.grpc.MethodDescriptor;
import org.sparkproject.io.grpc.Status;
import org.sparkproject.io.grpc.StatusRuntimeException;
import org.sparkproject.io.netty.util.internal.PlatformDependent;
import org.sparkproject.io.netty.util.internal.logging.InternalLoggerFactory;
import org.sparkproject.io.netty.util.internal.logging.JdkLoggerFactory;
import scala.Option;
import scala.concurrent.duration.FiniteDuration;

/**
 * The client with limits of time: no call waits forever, and a lost connection is retried only so
 * long. While a statement runs, the server must report at least every 30 seconds. By default it
 * reports every other second.
 */
final class Connection implements ClientInterceptor
{
    /** A stream of results is opened again after this time, which loses nothing. So it does not
     * wait for a peer that is gone without a word. */
    private static final long STREAM_SECONDS = 30;

    /** Writes to standard error what faults say as well. The field keeps the logger, and so its
     * level. */
    private static final Logger TRANSPORT = Logger.getLogger("org.sparkproject.io");

    static {
        // Otherwise the transport loads a library of logs, which takes as long as to connect.
        InternalLoggerFactory.setDefaultFactory(JdkLoggerFactory.INSTANCE);
        TRANSPORT.setLevel(Level.OFF);
        leaveOutRecorder();
    }

    private final SparkConnectClient client;
    private final long callNanos;
    private volatile long retryNanos = 0;
    private volatile long lastAnswer = System.nanoTime();
    private volatile Status failure;
    private volatile boolean isAbandoned;

    /** Connects to nothing yet. */
    Connection(String url, long callMillis) throws ClusterFault
    {
        callNanos = TimeUnit.MILLISECONDS.toNanos(callMillis);
        try {
            client = SparkConnectClient.builder().connectionString(url).userAgent("hvinteg")
                .interceptor(this).retryPolicy(policy()).allowArrowBatchChunking(false).build();
        } catch (RuntimeException wrong) {
            throw new ClusterFault(ClusterFault.Kind.ADDRESS, wrong.getMessage(), wrong);
        }
        // A compressed plan needs a native library, which is unpacked into the temporary folder.
        client.setPlanCompressionOptions(Option.empty());
    }

    /** How the last call failed that did, or null. */
    Status failure()
    {
        return failure;
    }

    SparkConnectClient client()
    {
        return client;
    }

    /** How long after its last answer a server is tried again. Until this is called, it is not. */
    void setRetryMillis(long millis)
    {
        retryNanos = TimeUnit.MILLISECONDS.toNanos(millis);
    }

    /** A call begins: only from now on is the server late. */
    void begin()
    {
        lastAnswer = System.nanoTime();
    }

    /** Ends all calls, and those that follow, which fail at once. Any thread. */
    void abandon()
    {
        isAbandoned = true;
        client.shutdown();
    }

    /** Ends all calls. Waits for them, so that no thread of theirs is left. */
    void close()
    {
        retryNanos = 0;
        client.shutdown();
        try {
            client.channel().awaitTermination(5, TimeUnit.SECONDS);
        } catch (InterruptedException interrupted) {
            Thread.currentThread().interrupt();
        }
    }

    /** Without this, the transport loads the virtual machine's recorder for its events, which takes
     * time. It reads the setting once. */
    private static void leaveOutRecorder()
    {
        String setting = "org.sparkproject.io.netty.jfr.enabled";
        if (System.getProperty(setting) == null) {
            System.setProperty(setting, "false");
            PlatformDependent.isJfrEnabled();
            System.clearProperty(setting);
        }
    }

    private RetryPolicy policy()
    {
        FiniteDuration none = FiniteDuration.apply(0, TimeUnit.SECONDS);
        return new RetryPolicy(Option.empty(), FiniteDuration.apply(50, TimeUnit.MILLISECONDS),
            Option.apply(FiniteDuration.apply(2, TimeUnit.SECONDS)), 2.0, none, none, this::mayRetry,
            "hvinteg", false, Option.empty());
    }

    private Object mayRetry(Throwable thrown)
    {
        return !isAbandoned && thrown instanceof StatusRuntimeException status
            && isOfConnection(status.getStatus()) && System.nanoTime() - lastAnswer < retryNanos;
    }

    private static boolean isOfConnection(Status status)
    {
        return switch (status.getCode()) {
            case UNAVAILABLE, DEADLINE_EXCEEDED -> true;
            // A stream was opened again before the server noticed the end of the first one.
            case INTERNAL -> String.valueOf(status.getDescription()).contains("INVALID_CURSOR.DISCONNECTED");
            default -> false;
        };
    }

    @Override
    public <Q, A> ClientCall<Q, A> interceptCall(
            MethodDescriptor<Q, A> method, CallOptions options, Channel next)
    {
        long nanos = method.getType() == MethodDescriptor.MethodType.SERVER_STREAMING
            ? TimeUnit.SECONDS.toNanos(STREAM_SECONDS) : callNanos;
        CallOptions limited = options.withDeadlineAfter(nanos, TimeUnit.NANOSECONDS);
        return new SimpleForwardingClientCall<Q, A>(next.newCall(method, limited)) {
            @Override
            public void start(Listener<A> listener, Metadata headers)
            {
                super.start(new SimpleForwardingClientCallListener<A>(listener) {
                    @Override
                    public void onMessage(A message)
                    {
                        lastAnswer = System.nanoTime();
                        super.onMessage(message);
                    }

                    @Override
                    public void onClose(Status status, Metadata trailers)
                    {
                        if (!status.isOk()) {
                            failure = status;
                        }
                        super.onClose(status, trailers);
                    }
                }, headers);
            }
        };
    }
}

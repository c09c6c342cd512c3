package com.vexa.ae.cluster;

import org.apache.spark.connect.proto.LocalRelation;
import org.apache.spark.connect.proto.Relation;

/**
 * Sends records to the cluster in batches. A batch is in memory here and on the server only while it is
 * sent, so the size of a batch bounds the memory. A batch may have 64 MiB.
 */
public final class RowUpload
{
    private static final int MOST_BYTES = 64 << 20;

    private final ClusterSession session;
    private final ArrowWriter writer;

    RowUpload(ClusterSession session, ArrowWriter writer)
    {
        this.session = session;
        this.writer = writer;
    }

    /** Makes the batch a view. The server keeps it in memory: for few records. */
    public void register(String view, ColumnBatch batch) throws ClusterFault
    {
        session.registerRelation(view, Relation.newBuilder().setLocalRelation(relation(batch)).build(), "");
    }

    /** Appends the batch to a folder of Parquet files, which every worker must see. Returns when
     * it is written. */
    public void append(String path, ColumnBatch batch, String tag) throws ClusterFault
    {
        session.append(relation(batch), path, tag);
    }

    private LocalRelation relation(ColumnBatch batch) throws ClusterFault
    {
        if (batch.block.limit() > MOST_BYTES) {
            throw new ClusterFault(ClusterFault.Kind.USE,
                "A batch has " + batch.block.limit() + " bytes; " + MOST_BYTES + " are allowed", null);
        }
        return LocalRelation.newBuilder().setData(writer.write(batch)).build();
    }
}

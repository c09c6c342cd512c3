package com.vexa.ae.cluster;

import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;
import org.apache.spark.connect.proto.CollectMetrics;
import org.apache.spark.connect.proto.Expression;
import org.apache.spark.connect.proto.Relation;
import org.apache.spark.connect.proto.RelationCommon;
import org.apache.spark.connect.proto.SQL;
import org.apache.spark.connect.proto.SubqueryAlias;
import org.apache.spark.connect.proto.WithRelations;

/**
 * Queries whose records are counted while a statement runs that reads them by their names. SQL cannot say this, so a
 * statement is sent with the relations of the queries that it reads.
 */
final class CountedQueries
{
    private record Counted(String name, String query, Relation relation) {}

    private final List<Counted> queries = new ArrayList<>();
    private long lastPlan;

    /**
     * Adds a query, which may read those before it.
     *
     * @param name occurs in no text but those that read the query
     * @param metrics the name of a metric and the aggregate, in SQL, in turn
     */
    void add(String name, String query, String... metrics)
    {
        CollectMetrics.Builder counted = CollectMetrics.newBuilder().setInput(sql(query)).setName(name);
        for (int index = 0; index + 1 < metrics.length; index += 2) {
            counted.addMetrics(Expression.newBuilder().setExpressionString(Expression.ExpressionString.newBuilder()
                .setExpression(metrics[index + 1] + " AS `" + metrics[index] + "`")));
        }
        Relation relation = planned().setCollectMetrics(counted).build();
        queries.add(new Counted(name, query, planned().setSubqueryAlias(SubqueryAlias.newBuilder()
            .setInput(relation).setAlias(name)).build()));
    }

    /** The relation of a statement. */
    Relation relation(String statement)
    {
        Deque<Relation> read = new ArrayDeque<>();
        StringBuilder texts = new StringBuilder(statement);
        for (int index = queries.size() - 1; index >= 0; --index) {
            Counted counted = queries.get(index);
            if (texts.indexOf(counted.name()) >= 0) {
                read.addFirst(counted.relation());
                texts.append('\n').append(counted.query());
            }
        }
        return read.isEmpty() ? sql(statement) : planned().setWithRelations(
            WithRelations.newBuilder().setRoot(sql(statement)).addAllReferences(read)).build();
    }

    private static Relation sql(String text)
    {
        return Relation.newBuilder().setSql(SQL.newBuilder().setQuery(text)).build();
    }

    /** The server tells relations apart by their numbers. */
    private Relation.Builder planned()
    {
        return Relation.newBuilder().setCommon(RelationCommon.newBuilder().setPlanId(++lastPlan));
    }
}
